#include "preload/MachineConf.h"

#include <arpa/inet.h>
#include <cstdio>
#include <cstring>
#include <utmp.h>

#include "preload/Text.h"

namespace fakemachine
{

// One line on its way into the record.
struct Line {
    const std::vector<Word>& words;
    const LinePlace& place;

    const std::string& at(size_t index) const
    {
        if (index >= words.size())
            fail(place, "word missing after " + words.back().text);
        return words[index].text;
    }
    uint64_t number(size_t index) const { return parseNumber(at(index), place); }
    Numbers pairs(size_t first) const
    {
        Numbers numbers;
        for (size_t i = first; i < words.size(); i += 2)
            numbers[at(i)] = number(i + 1);
        return numbers;
    }
};

template <size_t Size>
static void copyField(char (&field)[Size], const std::string& text)
{
    snprintf(field, Size, "%s", text.c_str());
}

static void parseUname(MachineConf& conf, const Line& line)
{
    if (!conf.uname)
        conf.uname = utsname{};
    const std::string& field = line.at(1);
    const std::string& text = line.at(2);
    if (field == "sysname")
        copyField(conf.uname->sysname, text);
    else if (field == "nodename")
        copyField(conf.uname->nodename, text);
    else if (field == "release")
        copyField(conf.uname->release, text);
    else if (field == "version")
        copyField(conf.uname->version, text);
    else if (field == "machine")
        copyField(conf.uname->machine, text);
    else
        fail(line.place, "no field of uname: " + field);
}

static uint32_t parseAddress(const std::string& text, const LinePlace& place)
{
    in_addr address{};
    if (inet_pton(AF_INET, text.c_str(), &address) != 1)
        fail(place, "no IPv4 address: " + text);
    return address.s_addr;
}

static std::string parseHardware(const std::string& text, const LinePlace& place)
{
    std::string digits;
    for (const char c : text)
        if (c != ':')
            digits += c;
    const std::string bytes = parseBytes({{digits, false}}, 0, place);
    if (bytes.size() != 6)
        fail(place, "no hardware address: " + text);
    return bytes;
}

static void parseInterface(MachineConf& conf, const Line& line)
{
    conf.network = true;
    Interface interface;
    interface.name = line.at(1);
    for (size_t i = 2; i < line.words.size(); i += 2) {
        const std::string& key = line.at(i);
        const std::string& value = line.at(i + 1);
        if (key == "addr")
            interface.address = parseAddress(value, line.place);
        else if (key == "mask")
            interface.mask = parseAddress(value, line.place);
        else if (key == "mac")
            interface.hardware = parseHardware(value, line.place);
        else if (key == "hwtype")
            interface.hardwareType = static_cast<unsigned short>(line.number(i + 1));
        else
            fail(line.place, "unknown word " + key + " in interface");
    }
    conf.interfaces.push_back(interface);
}

static void parseLogin(MachineConf& conf, const Line& line)
{
    static const std::map<std::string, int> kTypes = {
        {"RUN_LVL", RUN_LVL},   {"BOOT_TIME", BOOT_TIME},         {"NEW_TIME", NEW_TIME},
        {"OLD_TIME", OLD_TIME}, {"LOGIN_PROCESS", LOGIN_PROCESS}, {"USER_PROCESS", USER_PROCESS}};
    Login login;
    const auto type = kTypes.find(line.at(1));
    login.type = type != kTypes.end() ? type->second : static_cast<int>(line.number(1));
    login.seconds = parseSigned(line.at(2), line.place);
    for (size_t i = 3; i < line.words.size(); i += 2) {
        const std::string& key = line.at(i);
        std::string* field = key == "line"   ? &login.line
                             : key == "id"   ? &login.id
                             : key == "user" ? &login.user
                                             : nullptr;
        if (field == nullptr)
            fail(line.place, "unknown word " + key + " in login");
        *field = line.at(i + 1);
    }
    conf.logins.push_back(login);
}

static void parseLine(MachineConf& conf, const Line& line)
{
    const std::string& directive = line.words[0].text;
    if (directive == "uname")
        parseUname(conf, line);
    else if (directive == "nprocs")
        conf.processors = static_cast<int>(line.number(1));
    else if (directive == "nprocs_conf")
        conf.configuredProcessors = static_cast<int>(line.number(1));
    else if (directive == "sysinfo")
        (conf.sysinfo ? *conf.sysinfo : conf.sysinfo.emplace())[line.at(1)] = line.number(2);
    else if (directive == "pagesize")
        conf.pageSize = static_cast<int>(line.number(1));
    else if (directive == "clock")
        conf.clock = parseSigned(line.at(1), line.place);
    else if (directive == "network")
        conf.network = true;
    else if (directive == "interface")
        parseInterface(conf, line);
    else if (directive == "host")
        conf.hosts[line.at(1)] = line.at(2);
    else if (directive == "host-seconds")
        conf.hostSeconds = parseSigned(line.at(1), line.place);
    else if (directive == "login")
        parseLogin(conf, line);
    else if (directive == "statvfs")
        conf.fileSystems[line.at(1)] = line.pairs(2);
    else if (directive == "directory")
        conf.directories.insert(line.at(1));
    else if (directive == "order")
        for (size_t i = 2; i < line.words.size(); ++i)
            conf.order[line.at(1)].push_back(line.at(i));
    else if (directive == "error")
        conf.errors[{line.at(1), line.at(2)}] = parseErrno(line.at(3), line.place);
    else if (directive != "env") // the environment is made by who starts the scan
        fail(line.place, "unknown directive " + directive);
}

MachineConf MachineConf::parse(const std::string& text, const std::string& name)
{
    MachineConf conf;
    LinePlace place{name, 0};
    for (const std::string& line : splitLines(text)) {
        ++place.number;
        const std::vector<Word> words = splitWords(line, place);
        if (!words.empty())
            parseLine(conf, Line{words, place});
    }
    return conf;
}

int MachineConf::errorOf(const std::string& call, const std::string& subject) const
{
    for (const auto& key : {std::pair(call, subject), std::pair(call, std::string("*"))}) {
        const auto found = errors.find(key);
        if (found != errors.end())
            return found->second;
    }
    return 0;
}

} // namespace fakemachine
