#include "Faults.h"

#include <cctype>
#include <csignal>
#include <map>
#include <sstream>

// The errnos to try for each call. Calls that cannot fail are not listed.
static const std::vector<std::string>& errnosOf(const std::string& call)
{
    static const std::map<std::string, std::vector<std::string>> kErrnos = {
        {"open", {"ENOENT", "EACCES", "EMFILE", "EINTR"}},
        {"openat", {"EACCES"}},
        {"fopen", {"ENOENT", "EACCES", "EMFILE"}},
        {"freopen", {"EACCES"}},
        {"fdopen", {"ENOMEM"}},
        {"read", {"EIO", "EINTR", "EOF", "SHORT"}},
        {"fread", {"EIO", "SHORT"}},
        {"pread", {"EIO"}},
        {"write", {"EIO", "ENOSPC", "SHORT"}},
        {"lseek", {"EINVAL"}},
        {"close", {"EIO"}},
        {"fclose", {"EIO", "ENOSPC"}},
        {"stat", {"ENOENT", "EACCES", "EIO"}},
        {"access", {"EACCES"}},
        {"readlink", {"ENOENT"}},
        {"unlink", {"EACCES"}},
        {"remove", {"EACCES", "EROFS"}},
        {"rename", {"EACCES", "EROFS"}},
        {"opendir", {"ENOENT", "EMFILE"}},
        {"readdir", {"EIO", "EOF"}},
        {"ioctl", {"EIO", "ENOTTY", "EINTR"}},
        {"SIOCGIFCONF", {"EFAULT"}},
        {"SIOCGIFADDR", {"ENODEV", "EADDRNOTAVAIL"}},
        {"SIOCGIFHWADDR", {"ENODEV"}},
        {"SIOCGIFNETMASK", {"ENODEV"}},
        {"socket", {"EMFILE", "EAFNOSUPPORT"}},
        {"mmap", {"EPERM", "ENOMEM"}},
        {"munmap", {"EINVAL"}},
        {"popen", {"ENOMEM", "EMFILE"}},
        {"pclose", {"ECHILD"}},
        {"setmntent", {"ENOENT", "EMFILE"}},
        {"getmntent", {"EIO"}},
        {"statvfs", {"EACCES", "EIO"}},
        {"uname", {"EFAULT"}},
        {"sysinfo", {"EFAULT"}},
        {"gethostbyaddr", {"EAGAIN"}},
        {"getutid", {"ESRCH"}},
        {"setlocale", {"ENOMEM"}},
        {"fputs", {"EIO", "ENOSPC"}},
        {"puts", {"ENOSPC", "EPIPE"}},
        {"fputc", {"ENOSPC", "EPIPE"}},
        {"fwrite", {"ENOSPC", "EPIPE"}},
        {"fflush", {"EIO", "ENOSPC"}},
        {"fprintf", {"ENOSPC", "EPIPE"}},
        {"printf", {"ENOSPC", "EPIPE"}},
    };
    static const std::vector<std::string> kNone;
    const auto found = kErrnos.find(call);
    return found == kErrnos.end() ? kNone : found->second;
}

static void planCall(const std::string& line, std::vector<Fault>& faults)
{
    std::istringstream words(line);
    std::string number, name, subject;
    words >> number >> name;
    std::getline(words >> std::ws, subject);
    if (number == "m") {
        for (unsigned long i = 1; i <= std::stoul(name); ++i)
            faults.push_back({"m" + std::to_string(i), "allocation", true, true});
        return;
    }
    for (const std::string& error : errnosOf(name))
        faults.push_back({number + ":" + error, name + " " + subject, false, subject == "stdout"});
}

std::vector<Fault> planFaults(FakeMachine& machine)
{
    ScanOptions options;
    options.countFile = machine.folder() + "/calls";
    options.secondsAllowed = 60;
    // Every later run finds a log and its backup, and so must the counted one.
    machine.scan(options);
    machine.scan(options);
    writeTextFile(options.countFile, "");
    machine.scan(options);
    std::vector<Fault> faults;
    std::istringstream calls(readTextFile(options.countFile));
    for (std::string line; std::getline(calls, line);)
        planCall(line, faults);
    return faults;
}

static bool isNameCharacter(char c)
{
    return isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.' || c == '-' || c == ':';
}

std::string checkReport(const std::string& report, bool complete)
{
    std::vector<std::string> open;
    for (size_t at = report.find('<'); at != std::string::npos; at = report.find('<', at + 1)) {
        const bool closes = at + 1 < report.size() && report[at + 1] == '/';
        const size_t start = at + (closes ? 2 : 1);
        size_t end = start;
        while (end < report.size() && isNameCharacter(report[end]))
            ++end;
        if (end == start && end < report.size())
            continue; // a bare "<" of an enumeration's text
        const std::string name = report.substr(start, end - start);
        if (report.find('>', end) == std::string::npos)
            return complete ? "the last tag is cut" : "";
        if (!closes)
            open.push_back(name);
        else if (open.empty() || open.back() != name)
            return "</" + name + "> closes nothing";
        else
            open.pop_back();
    }
    if (!complete)
        return "";
    if (!open.empty())
        return "<" + open.back() + "> is not closed";
    const std::string end = "</serviceDataList>";
    const bool ends = report.size() >= end.size() && report.compare(report.size() - end.size(), end.size(), end) == 0;
    return ends ? "" : "the report is not closed";
}

std::string tryFault(FakeMachine& machine, const Fault& fault)
{
    ScanOptions options;
    options.secondsAllowed = 10;
    options.faults = fault.setting;
    const ScanResult result = machine.scan(options);
    if (result.timedOut)
        return "it did not end";
    const bool aborted = fault.isAllocation && result.signal == SIGABRT;
    if (result.signal != 0 && !aborted)
        return "signal " + std::to_string(result.signal) + "\n" + result.errors;
    if (result.exitStatus != 0 && !aborted)
        return "status " + std::to_string(result.exitStatus) + "\n" + result.errors;
    if (result.errors.find("Sanitizer") != std::string::npos ||
        result.errors.find("runtime error") != std::string::npos)
        return result.errors;
    return checkReport(result.report, !fault.breaksOutput && !aborted);
}
