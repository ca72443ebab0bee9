#include "FakeMachine.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

const std::string* ReportRow::find(const std::string& name) const
{
    for (const auto& value : values)
        if (value.first == name)
            return &value.second;
    return nullptr;
}

static std::string unescape(std::string text)
{
    static const std::pair<const char*, const char*> kEscapes[] = {{"&lt;", "<"}, {"&amp;", "&"}};
    for (const auto& [escape, plain] : kEscapes)
        for (size_t at = text.find(escape); at != std::string::npos; at = text.find(escape, at + 1))
            text.replace(at, std::string(escape).size(), plain);
    return text;
}

// The attributes stand at four tabs; a value may hold any text but its own closing tag.
static ReportRow parseRow(const std::string& element)
{
    static const std::string kStart = "\n\t\t\t\t<";
    ReportRow row;
    for (size_t at = element.find(kStart); at != std::string::npos; at = element.find(kStart, at)) {
        at += kStart.size();
        const size_t nameEnd = element.find_first_of(" >", at);
        const size_t tagEnd = element.find('>', at);
        if (tagEnd == std::string::npos)
            break;
        const std::string name = element.substr(at, nameEnd - at);
        const size_t end = element.find("</" + name + ">", tagEnd);
        if (end == std::string::npos)
            break;
        row.values.emplace_back(name, unescape(element.substr(tagEnd + 1, end - tagEnd - 1)));
        if (element.compare(nameEnd, tagEnd - nameEnd, " IsKey=\"1\"") == 0)
            row.keys.push_back(name);
        at = end;
    }
    return row;
}

std::vector<ReportRow> ScanResult::rows(const std::string& group) const
{
    static const std::string kStart = "\n\t<serviceData>";
    static const std::string kEnd = "\n\t</serviceData>";
    std::vector<ReportRow> found;
    for (size_t at = report.find(kStart); at != std::string::npos; at = report.find(kStart, at + 1)) {
        const std::string element = report.substr(at, report.find(kEnd, at) - at);
        if (element.find("<name>" + group + "</name>") != std::string::npos)
            found.push_back(parseRow(element));
    }
    return found;
}

std::string ScanResult::value(const std::string& group, size_t row, const std::string& name) const
{
    const std::vector<ReportRow> all = rows(group);
    if (row >= all.size())
        return "(no row)";
    const std::string* found = all[row].find(name);
    return found == nullptr ? "(no value)" : *found;
}

bool ScanResult::has(const std::string& group, size_t row, const std::string& name) const
{
    const std::vector<ReportRow> all = rows(group);
    return row < all.size() && all[row].find(name) != nullptr;
}

std::string readTextFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void writeTextFile(const std::string& path, const std::string& text)
{
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string withInserted(const std::string& text, const std::string& before, const std::string& more)
{
    const size_t place = text.find(before);
    return place == std::string::npos ? text : text.substr(0, place) + more + text.substr(place);
}

static void appendLine(const std::string& path, const std::string& line)
{
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::app) << line << "\n";
}

FakeMachine::FakeMachine()
{
    std::string name = (fs::temp_directory_path() / "fakemachine.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        perror("mkdtemp");
        abort();
    }
    base_ = name;
    fs::create_directories(folder());
    fs::create_directories(workingFolder());
}

FakeMachine FakeMachine::open(const std::string& folder)
{
    FakeMachine machine;
    for (const char* part : {"root", "devices", "commands", "machine.conf", "memory.txt"})
        if (fs::exists(folder + "/" + part))
            fs::copy(folder + "/" + part, machine.folder() + "/" + part,
                     fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    if (fs::exists(folder + "/start-files"))
        fs::copy(folder + "/start-files", machine.workingFolder(), fs::copy_options::recursive);
    return machine;
}

FakeMachine::FakeMachine(FakeMachine&& other) noexcept
    : base_(std::exchange(other.base_, "")), commandCount_(other.commandCount_)
{
}

FakeMachine::~FakeMachine()
{
    std::error_code ignored;
    if (!base_.empty())
        fs::remove_all(base_, ignored);
}

FakeMachine& FakeMachine::file(const std::string& path, const std::string& text)
{
    writeTextFile(folder() + "/root" + path, text);
    return *this;
}

FakeMachine& FakeMachine::without(const std::string& path)
{
    fs::remove_all(folder() + "/root" + path);
    fs::remove_all(folder() + "/devices" + path);
    if (path == "/dev/mem")
        fs::remove(folder() + "/memory.txt");
    return *this;
}

FakeMachine& FakeMachine::conf(const std::string& line)
{
    appendLine(folder() + "/machine.conf", line);
    return *this;
}

void FakeMachine::addCommand(const std::string& commandLine, const std::string& kind, const std::string& text,
                             int exitStatus)
{
    const std::string index = folder() + "/commands/commands.conf";
    const std::string name = "given-" + std::to_string(++commandCount_) + ".txt";
    writeTextFile(folder() + "/commands/" + name, text);
    appendLine(index, "command " + commandLine);
    appendLine(index, kind + " " + name);
    appendLine(index, "exit " + std::to_string(exitStatus));
}

FakeMachine& FakeMachine::command(const std::string& commandLine, const std::string& output, int exitStatus)
{
    addCommand(commandLine, "output", output, exitStatus);
    return *this;
}

FakeMachine& FakeMachine::commandErrors(const std::string& commandLine, const std::string& errors, int exitStatus)
{
    addCommand(commandLine, "stderr", errors, exitStatus);
    return *this;
}

FakeMachine& FakeMachine::commandFails(const std::string& commandLine, const std::string& errnoName)
{
    const std::string index = folder() + "/commands/commands.conf";
    appendLine(index, "command " + commandLine);
    appendLine(index, "fail " + errnoName);
    return *this;
}

FakeMachine& FakeMachine::device(const std::string& path, const std::string& text)
{
    writeTextFile(folder() + "/devices" + path, text);
    return *this;
}

FakeMachine& FakeMachine::memory(const std::string& text)
{
    writeTextFile(folder() + "/memory.txt", text);
    return *this;
}

FakeMachine& FakeMachine::env(const std::string& name, const std::string& value)
{
    return conf("env " + name + " " + value);
}

FakeMachine& FakeMachine::startFile(const std::string& name, const std::string& text)
{
    writeTextFile(workingFolder() + "/" + name, text);
    return *this;
}

// Only what the machine says and what the harness needs; the time zone and the locales of the real computer stay out.
std::vector<std::string> FakeMachine::environment(const ScanOptions& options) const
{
    std::map<std::string, std::string> variables = {{"TZ", "UTC0"}, {"LOCPATH", INVHW_LOCALES}};
    std::istringstream conf(readTextFile(folder() + "/machine.conf"));
    for (std::string line; std::getline(conf, line);) {
        std::istringstream words(line);
        std::string directive, name, value;
        if (!(words >> directive >> name) || directive != "env")
            continue;
        std::getline(words >> std::ws, value);
        variables[name] = value;
    }
    for (const auto& [name, value] : options.environment)
        variables[name] = value;
    variables["LD_PRELOAD"] = FAKEMACHINE_LIBRARY;
    variables["FAKEMACHINE"] = folder();
    variables["FAKEMACHINE_PASS"] = std::string(INVHW_BINARY_DIR) + ":" + workingFolder() + ":" + options.workingFolder;
    if (!options.faults.empty())
        variables["FAKEMACHINE_FAIL"] = options.faults;
    if (!options.countFile.empty())
        variables["FAKEMACHINE_COUNT"] = options.countFile;
    variables["ASAN_OPTIONS"] = "verify_asan_link_order=0:detect_leaks=1:exitcode=98:abort_on_error=0";
    variables["UBSAN_OPTIONS"] = "halt_on_error=1:exitcode=97";
    std::vector<std::string> settings;
    for (const auto& [name, value] : variables)
        settings.push_back(name + "=" + value);
    return settings;
}

static void redirect(const std::string& path, int flags, int target)
{
    const int descriptor = open(path.c_str(), flags, 0600);
    if (descriptor < 0 || dup2(descriptor, target) < 0)
        _exit(96);
    if (descriptor != target)
        close(descriptor);
}

static void limit(__rlimit_resource resource, unsigned long value)
{
    const rlimit limits{value, value};
    if (value != 0 && setrlimit(resource, &limits) != 0)
        _exit(96);
}

// As execve takes a list of texts.
static std::vector<char*> pointersTo(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// In the child: becomes the program.
[[noreturn]] static void runProgram(const std::string& base, const std::vector<std::string>& settings,
                                    const ScanOptions& options)
{
    const std::string folder = options.workingFolder.empty() ? base + "/scratch" : options.workingFolder;
    if (chdir(folder.c_str()) != 0)
        _exit(96);
    redirect("/dev/null", O_RDONLY, STDIN_FILENO);
    redirect(options.standardOutput.empty() ? base + "/stdout" : options.standardOutput,
             options.standardOutput.empty() ? O_WRONLY | O_CREAT | O_TRUNC : O_WRONLY, STDOUT_FILENO);
    redirect(base + "/stderr", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    if (options.removeWorkingFolder)
        fs::remove_all(folder);
    for (const int descriptor : options.closedStreams)
        close(descriptor);
    std::vector<std::string> command = {options.program.empty() ? INVHW_PROGRAM : options.program};
    command.insert(command.end(), options.arguments.begin(), options.arguments.end());
    const std::vector<char*> arguments = pointersTo(command);
    const std::vector<char*> environment = pointersTo(settings);
    limit(RLIMIT_NOFILE, options.openFiles);
    limit(RLIMIT_AS, options.addressSpace);
    limit(RLIMIT_FSIZE, options.fileSize);
    limit(RLIMIT_STACK, options.stackSize);
    limit(RLIMIT_CORE, 0);
    execve(arguments[0], arguments.data(), environment.data());
    _exit(96);
}

// Waits for the end of the child, which is killed when its time is over.
static void awaitEnd(pid_t child, int seconds, ScanResult& result)
{
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    pollfd wait{handle, POLLIN, 0};
    if (handle >= 0 && poll(&wait, 1, seconds * 1000) == 0) {
        result.timedOut = true;
        kill(child, SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (handle >= 0)
        close(handle);
    if (WIFEXITED(status))
        result.exitStatus = WEXITSTATUS(status);
    else
        result.signal = WTERMSIG(status);
}

ScanResult FakeMachine::scan(const ScanOptions& options)
{
    const std::vector<std::string> settings = environment(options);
    ScanResult result;
    const pid_t child = fork();
    if (child == 0)
        runProgram(base_, settings, options);
    if (child < 0) {
        perror("fork");
        return result;
    }
    awaitEnd(child, options.secondsAllowed, result);
    result.report = options.standardOutput.empty() ? readTextFile(base_ + "/stdout") : "";
    result.errors = readTextFile(base_ + "/stderr");
    if (fs::exists(workingFolder()))
        for (const fs::directory_entry& entry : fs::directory_iterator(workingFolder()))
            if (entry.is_regular_file())
                result.files[entry.path().filename().string()] = readTextFile(entry.path().string());
    if (result.files.count("libInvHW.log") != 0)
        result.log = result.files["libInvHW.log"];
    return result;
}
