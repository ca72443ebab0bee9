#include "host/printer/PrintersConf.h"

#include <algorithm>

#include "host/text/Secrets.h"
#include "report/Text.h"

namespace host
{
namespace
{
// "#" begins a comment, "\#" is one.
std::string withoutComment(std::string_view line)
{
    std::string plain;
    for (size_t i = 0; i < line.size() && line[i] != '#'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == '#')
            ++i;
        plain += line[i];
    }
    return std::string(report::trimmed(plain));
}

// The queue that a line begins ("<DefaultPrinter Office>"), its name empty when the line begins none.
PrintQueue begunBy(std::string_view line)
{
    constexpr std::string_view kPrinter = "<Printer ", kDefault = "<DefaultPrinter ";
    PrintQueue queue;
    queue.isDefault = line.starts_with(kDefault);
    if (!line.ends_with('>') || (!queue.isDefault && !line.starts_with(kPrinter)))
        return queue;
    line.remove_prefix(queue.isDefault ? kDefault.size() : kPrinter.size());
    queue.name = report::trimmed(line.substr(0, line.size() - 1));
    return queue;
}

void takeSetting(PrintQueue& queue, std::string_view line)
{
    const size_t end = std::min(line.find_first_of(" \t"), line.size());
    const std::string_view name = line.substr(0, end), value = report::trimmed(line.substr(end));
    if (name == "Info")
        queue.info = value;
    else if (name == "Location")
        queue.location = value;
    else if (name == "MakeModel")
        queue.makeModel = value;
    else if (name == "DeviceURI")
        queue.deviceUri = value;
}

bool isAmong(std::string_view word, std::initializer_list<std::string_view> words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

// The host of "ipp://user@host:631/queue".
std::string hostOf(std::string_view uri)
{
    constexpr std::string_view kBegin = "://";
    const size_t begin = uri.find(kBegin);
    if (begin == std::string_view::npos)
        return "";
    std::string_view authority = uri.substr(begin + kBegin.size());
    authority = authority.substr(0, authority.find_first_of("/?#"));
    if (const size_t at = authority.rfind('@'); at != std::string_view::npos)
        authority.remove_prefix(at + 1);
    const bool isBracketed = authority.starts_with('[');
    return report::lower(authority.substr(0, isBracketed ? authority.find(']') + 1 : authority.find(':')));
}

// A line '*NickName: "HP LaserJet 4200"', its keyword without option and translation.
report::KeyValue ppdLine(std::string_view line)
{
    const auto [key, value] = report::keyValue(line, ':');
    const bool isQuoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
    return {key.substr(0, key.find(' ')), isQuoted ? value.substr(1, value.size() - 2) : value};
}

// "application/vnd.cups-raster 0 rastertopclx": a type, or two, a cost, and the program; "-" is none.
std::string programOf(std::string_view filter)
{
    const std::vector<std::string_view> words = report::words(filter);
    return words.size() >= 3 && words.back() != "-" ? std::string(words.back()) : "";
}

void fill(std::string& text, std::string_view value)
{
    if (text.empty())
        text = value;
}
} // namespace

std::vector<PrintQueue> parsePrintersConf(std::string_view text)
{
    std::vector<PrintQueue> queues;
    bool isInside = false;
    std::string_view rest = text;
    std::string_view line;
    while (report::takeLine(rest, line)) {
        const std::string plain = withoutComment(line);
        if (PrintQueue begun = begunBy(plain); !begun.name.empty()) {
            queues.push_back(std::move(begun));
            isInside = true;
        } else if (plain.starts_with('<')) {
            isInside = false;
        } else if (isInside) {
            takeSetting(queues.back(), plain);
        }
    }
    return queues;
}

const char* localityOf(std::string_view uri)
{
    const std::string scheme = report::lower(uri.substr(0, std::min(uri.find(':'), uri.size())));
    if (isAmong(scheme, {"usb", "parallel", "serial", "file", "canonusb", "epsonusb"}))
        return "Y";
    if (scheme == "hp" || scheme == "hpfax") // one program for both, which says in the path how it prints
        return uri.find(":/net/") != std::string_view::npos   ? "N"
               : uri.find(":/usb/") != std::string_view::npos ? "Y"
                                                              : "";
    if (!isAmong(scheme, {"ipp", "ipps", "http", "https", "socket", "lpd", "smb", "dnssd", "mdns", "snmp"}))
        return "";
    return isAmong(hostOf(uri), {"localhost", "127.0.0.1", "[::1]"}) ? "Y" : "N";
}

std::string maskPrinterUri(std::string_view uri)
{
    constexpr std::string_view kAuthority = "://";
    const size_t at = uri.rfind('@');
    const size_t authority = uri.find(kAuthority);
    const size_t begin = authority != std::string_view::npos ? authority + kAuthority.size() : uri.find(':') + 1;
    if (at == std::string_view::npos || begin > at)
        return maskCommandLine(uri);
    return maskCommandLine(std::string(uri.substr(0, begin)) + "***" + std::string(uri.substr(at)));
}

std::string maskPrintersConf(std::string_view text)
{
    constexpr std::string_view kUri = "DeviceURI";
    std::string masked;
    std::string_view line;
    while (report::takeLine(text, line)) {
        const std::string_view setting = report::trimmed(line);
        if (setting.starts_with(kUri))
            masked.append(kUri).append(" ").append(maskPrinterUri(report::trimmed(setting.substr(kUri.size()))));
        else
            masked += line;
        masked += '\n';
    }
    return masked;
}

bool isPpdFactLine(std::string_view line)
{
    return isAmong(ppdLine(line).key, {"*NickName", "*FileVersion", "*cupsFilter", "*cupsFilter2"});
}

PpdFacts parsePpd(const std::vector<std::string>& lines)
{
    PpdFacts facts;
    for (const std::string& line : lines) {
        const auto [key, value] = ppdLine(line);
        if (key == "*NickName")
            fill(facts.nickName, value);
        else if (key == "*FileVersion")
            fill(facts.fileVersion, value);
        else if (key.starts_with("*cupsFilter"))
            fill(facts.filter, programOf(value));
    }
    return facts;
}
} // namespace host
