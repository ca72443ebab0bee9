#include "tests/ctl/Faults.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <iterator>
#include <map>

using nlohmann::json;
using std::chrono::seconds;

namespace
{
struct Error {
    const char* name;
    int number; // 0: the call returns 0
};

struct FailingCall {
    const char* name;
    std::vector<Error> errors;
};

#define ERROR(name)                                                                                                    \
    {                                                                                                                  \
#name, name                                                                                                    \
    }
constexpr Error kEnd{"EOF", 0};

// How calls fail. Those that cannot are not listed.
const std::vector<FailingCall>& failingCalls()
{
    static const std::vector<FailingCall> kCalls = {
        {"openat2", {ERROR(ENOENT), ERROR(EACCES), ERROR(EMFILE), ERROR(ENOSYS), ERROR(EAGAIN)}},
        {"openat", {ERROR(ENOENT), ERROR(EACCES), ERROR(EMFILE)}},
        {"read", {ERROR(EIO), ERROR(EINTR), kEnd}},
        {"pread64", {ERROR(EIO)}},
        {"lseek", {ERROR(EINVAL)}},
        {"getdents64", {ERROR(EIO), kEnd}},
        {"fstat", {ERROR(EIO)}},
        {"newfstatat", {ERROR(EIO), ERROR(EACCES)}},
        {"readlinkat", {ERROR(EIO)}},
        {"statfs", {ERROR(EIO), ERROR(EACCES)}},
        {"fstatfs", {ERROR(EIO)}},
        {"statx", {ERROR(ENOSYS)}},
        {"uname", {ERROR(EFAULT)}},
        {"socket", {ERROR(EMFILE), ERROR(EAFNOSUPPORT), ERROR(EACCES)}},
        {"setsockopt", {ERROR(ENOPROTOOPT)}},
        {"sendto", {ERROR(EPERM), ERROR(ENOBUFS)}},
        {"recvmsg", {ERROR(EIO), ERROR(EINTR), ERROR(EAGAIN), kEnd}},
        {"recvfrom", {ERROR(EIO)}},
        {"ioctl", {ERROR(EIO), ERROR(ENOTTY), ERROR(EPERM)}},
        {"mmap", {ERROR(ENOMEM)}},
        {"mremap", {ERROR(ENOMEM)}},
        {"brk", {kEnd}},
        {"munmap", {ERROR(EINVAL)}},
        {"clone", {ERROR(EAGAIN), ERROR(ENOMEM)}},
        {"pipe2", {ERROR(EMFILE), ERROR(ENFILE)}},
        {"poll", {ERROR(EINTR), ERROR(ENOMEM)}},
        {"write", {ERROR(EIO), ERROR(ENOSPC), ERROR(EPIPE), ERROR(EINTR)}},
        {"close", {ERROR(EIO)}},
        {"dup2", {ERROR(EBADF)}},
        {"close_range", {ERROR(ENOSYS)}},
        {"fcntl", {ERROR(EINVAL)}},
        {"kill", {ERROR(EPERM)}},
        {"wait4", {ERROR(ECHILD), ERROR(EINTR)}},
        {"prctl", {ERROR(EINVAL)}},
        {"prlimit64", {ERROR(EPERM)}},
        {"rt_sigaction", {ERROR(EINVAL)}},
        {"getrandom", {ERROR(ENOSYS)}},
    };
    return kCalls;
}
#undef ERROR

std::vector<int> watchedNumbers()
{
    std::vector<int> numbers;
    for (const FailingCall& call : failingCalls())
        numbers.push_back(callNumber(call.name));
    return numbers;
}

// Numbers the calls of each process, from the opening of the root on: what comes before is the loader's.
class CallCounter
{
public:
    // False before the beginning.
    bool count(const WatchedCall& call, size_t& process, size_t& number)
    {
        const bool opensFolder = call.number == callNumber("openat") && (call.arguments[2] & O_PATH) != 0;
        hasBegun_ = hasBegun_ || opensFolder;
        if (!hasBegun_)
            return false;
        process = processes_.try_emplace(call.process, processes_.size()).first->second;
        number = calls_[process]++;
        return true;
    }

private:
    bool hasBegun_ = false;
    std::map<pid_t, size_t> processes_;
    std::map<size_t, size_t> calls_;
};
} // namespace

std::string CallFault::text() const
{
    return "process " + std::to_string(process) + " call " + std::to_string(call) + " " + callName(number) + " " +
           error;
}

std::vector<std::string> FaultyScan::arguments() const
{
    std::vector<std::string> words{"scan", "--group", group_, "-f", "json", "--deadline", "2"};
    if (!root_.empty())
        words.insert(words.end(), {"--root", root_});
    return words;
}

std::vector<CallFault> FaultyScan::plan()
{
    CallCounter counter;
    std::vector<CallFault> faults;
    CallWatch watch(watchedNumbers(), false, [&](const WatchedCall& call) {
        CallFault fault;
        fault.number = call.number;
        if (!counter.count(call, fault.process, fault.call))
            return Verdict();
        for (const FailingCall& failing : failingCalls()) {
            if (callNumber(failing.name) != call.number)
                continue;
            for (const Error& error : failing.errors) {
                fault.error = error.name;
                fault.verdict.kind = error.number == 0 ? Verdict::Kind::Answer : Verdict::Kind::Fail;
                fault.verdict.value = error.number;
                faults.push_back(fault);
            }
        }
        return Verdict();
    });
    Program program(arguments());
    whole_ = watch.run(program).report()["groups"];
    return faults;
}

// Errors that are never an answer: what they cost has a reason in the group's status.
static bool mustBeTold(const std::string& error)
{
    return error == "EACCES" || error == "EMFILE" || error == "ENOMEM" || error == "EINTR";
}

// What the report of a copy has lost or changed without a reason.
static std::string untoldChange(const json& whole, const json& groups, const std::string& element)
{
    const json before = whole.value(element, json());
    const json after = groups.value(element, json());
    const json& status = groups["ScanStatus"][0];
    if (before == after || !status.value("Reason", "").empty())
        return "";
    return "no reason for " + json::diff(before, after).dump();
}

std::string FaultyScan::complaintOf(const ProgramResult& result, const CallFault& fault) const
{
    if (result.timedOut)
        return "it did not end";
    if (result.signal != 0)
        return "signal " + std::to_string(result.signal);
    if (result.errors.find("Sanitizer") != std::string::npos ||
        result.errors.find("runtime error") != std::string::npos)
        return result.errors;
    if (fault.process == 0 && result.status == 2) {
        const bool isOneLine = std::count(result.errors.begin(), result.errors.end(), '\n') == 1;
        return isOneLine ? "" : "trouble without one line about it: " + result.errors;
    }
    if (result.status != 0)
        return "status " + std::to_string(result.status) + ": " + result.errors;
    const json report = result.report();
    if (!report.is_object())
        return "no report: " + result.output.substr(0, 200);
    const json status = report["groups"].value("ScanStatus", json::array());
    if (status.size() != 1 || status[0].value("Group", "") != group_)
        return "no status of the group: " + status.dump();
    if (root_.empty() || !mustBeTold(fault.error))
        return "";
    std::string element = group_;
    std::erase(element, ' ');
    return untoldChange(whole_, report["groups"], element);
}

std::string FaultyScan::attempt(const CallFault& fault) const
{
    CallCounter counter;
    CallWatch watch(watchedNumbers(), false, [&](const WatchedCall& call) {
        size_t process = 0;
        size_t number = 0;
        const bool isCounted = counter.count(call, process, number);
        // Of two processes that run side by side the calls come in changing order: what is another call now stays.
        const bool isMeant =
            isCounted && process == fault.process && number == fault.call && call.number == fault.number;
        return isMeant ? fault.verdict : Verdict();
    });
    Program program(arguments());
    return complaintOf(watch.run(program, {}, seconds(20)), fault);
}

std::vector<std::string> groupsOfScan(const std::string& root)
{
    std::vector<std::string> arguments{"scan", "-f", "json"};
    if (!root.empty())
        arguments.insert(arguments.end(), {"--root", root});
    std::vector<std::string> names;
    const json report = Program(arguments).run().report();
    if (report.is_object())
        for (const json& row : report["groups"]["ScanStatus"])
            names.push_back(row["Group"]);
    return names;
}
