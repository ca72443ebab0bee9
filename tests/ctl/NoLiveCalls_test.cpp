// With --root nothing of the live machine is told: the program makes no system call that could. Every call is asked
// about but those that give memory, time that passes, processes of its own and their pipes; of the ones that open or
// look at files it is checked where they lead. What the processor tells without a call (CPUID, the page size, the
// kernel's page of clocks) no filter sees: tests/unit/host asks the recorded kernel for these.

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <linux/openat2.h>
#include <set>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include "tests/ctl/CallWatch.h"
#include "tests/ctl/SmallMachine.h"

namespace fs = std::filesystem;

namespace
{
// Calls that tell nothing of a machine, whatever their arguments.
std::vector<int> harmlessCalls()
{
    std::vector<int> numbers;
    for (const char* name : {"brk",
                             "clone",
                             "close",
                             "close_range",
                             "dup",
                             "dup2",
                             "dup3",
                             "exit",
                             "exit_group",
                             "fcntl",
                             "fork",
                             "fstat",
                             "fsync",
                             "futex",
                             "getdents64",
                             "getpid",
                             "getppid",
                             "getrandom",
                             "gettid",
                             "kill",
                             "lseek",
                             "madvise",
                             "mmap",
                             "mprotect",
                             "mremap",
                             "munmap",
                             "pipe2",
                             "poll",
                             "ppoll",
                             "prctl",
                             "pread64",
                             "prlimit64",
                             "read",
                             "rseq",
                             "rt_sigaction",
                             "rt_sigprocmask",
                             "rt_sigreturn",
                             "sched_yield",
                             "set_robust_list",
                             "sigaltstack",
                             "set_tid_address",
                             "tgkill",
                             "vfork",
                             "wait4",
                             "write",
                             "unlink",
                             "rename"})
        if (callNumber(name) != -1)
            numbers.push_back(callNumber(name));
    return numbers;
}

template <class T>
T argumentOf(const WatchedCall& call, size_t argument)
{
    T value{};
    const iovec here{&value, sizeof value};
    const iovec there{reinterpret_cast<void*>(call.arguments[argument]), sizeof value};
    process_vm_readv(call.process, &here, 1, &there, 1, 0);
    return value;
}

// What is wrong with a call of a scan of this root; empty when it leads nowhere else.
std::string violationOf(const WatchedCall& call, const std::string& root)
{
    const std::string name = callName(call.number);
    const bool isPathFirst = name == "readlink" || name == "open" || name == "stat" || name == "access";
    const std::string path = call.text(isPathFirst ? 0 : 1).value_or("?");
    const bool isInFolder = !isPathFirst && static_cast<int>(call.arguments[0]) != AT_FDCWD;
    if (name == "openat2") {
        const auto how = argumentOf<open_how>(call, 2);
        const bool isKept = isInFolder && (how.resolve & RESOLVE_IN_ROOT) != 0;
        return isKept ? "" : "openat2 of " + path;
    }
    // Names in a folder that was opened before, one at a time.
    if ((name == "openat" || name == "newfstatat" || name == "readlinkat") && isInFolder && path.find('/') == path.npos)
        return "";
    if (name == "fstatfs" || (name == "openat" && (path == "/dev/null" || path == root)))
        return "";
    if (name == "clock_gettime" && call.arguments[0] == CLOCK_MONOTONIC) // where the kernel's page has no clock
        return "";
    if (name == "ioctl" && call.arguments[0] <= STDERR_FILENO) // whether a standard stream is a terminal
        return "";
    if (isPathFirst || name == "openat" || name == "newfstatat" || name == "statx" || name == "statfs")
        return name + " of " + (name == "statfs" ? call.text(0).value_or("?") : path);
    return name;
}

// Runs a program with these arguments; what it asked of the machine since it opened its root.
std::set<std::string> violations(const std::vector<std::string>& arguments, const std::string& root,
                                 ProgramResult& result)
{
    std::set<std::string> found;
    bool hasBegun = false; // before that the program is loaded: its libraries come from the live machine
    CallWatch watch(harmlessCalls(), true, [&](const WatchedCall& call) {
        const std::string violation = violationOf(call, root);
        const bool opensFolder = callName(call.number) == "openat" && (call.arguments[2] & O_PATH) != 0;
        hasBegun = hasBegun || opensFolder;
        if (hasBegun && !violation.empty())
            found.insert(violation);
        return Verdict();
    });
    Program program(arguments);
    program.environment("ASAN_OPTIONS=detect_leaks=0"); // which looks into /proc at the end
    result = watch.run(program);
    EXPECT_TRUE(hasBegun);
    return found;
}

std::string listOf(const std::set<std::string>& texts)
{
    std::string list;
    for (const std::string& text : texts)
        list += "\n  " + text;
    return list;
}
} // namespace

TEST(ScanOfACopy, asksNothingOfThisMachine)
{
    if (!CallWatch::isPossible())
        GTEST_SKIP() << "no process can be watched here (seccomp)";
    const Tree tree;
    addSmallMachine(tree);
    ProgramResult result;
    const std::set<std::string> found =
        violations({"scan", "--root", tree.folder(), "-f", "json"}, tree.folder(), result);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_TRUE(result.report().is_object());
    EXPECT_GT(result.report()["groups"].size(), 20u) << result.output;
    EXPECT_TRUE(found.empty()) << listOf(found);
}

// A tree without a recording, with links that lead out of it.
TEST(ScanOfACopy, asksNothingOfThisMachineWhereTheTreeSaysNothing)
{
    if (!CallWatch::isPossible())
        GTEST_SKIP() << "no process can be watched here (seccomp)";
    const Tree tree;
    tree.link("/etc", "/etc");
    tree.link("/proc", "../../../../proc");
    tree.link("/sys", "/proc/self/root/sys");
    tree.link("/run", "/run");
    ProgramResult result;
    const std::set<std::string> found =
        violations({"scan", "--root", tree.folder(), "-f", "json"}, tree.folder(), result);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_TRUE(found.empty()) << listOf(found);
    const nlohmann::json groups = result.report()["groups"];
    for (const char* group :
         {"Processor", "Memory", "Storage", "IPAddress", "NetworkAdapter", "Partition", "MachineIdentity"})
        EXPECT_FALSE(groups.contains(group)) << group << ": " << groups[group];
}

// The recorded hosts, where there are any.
TEST(ScanOfACopy, asksNothingOfThisMachineForAnyRecordedHost)
{
    if (!CallWatch::isPossible())
        GTEST_SKIP() << "no process can be watched here (seccomp)";
    if (!fs::is_directory(INVHW_HOSTS))
        GTEST_SKIP() << "no recorded hosts";
    for (const fs::directory_entry& host : fs::directory_iterator(INVHW_HOSTS)) {
        const std::string root = host.path();
        ProgramResult result;
        const std::set<std::string> found = violations({"scan", "--root", root}, root, result);
        EXPECT_EQ(result.status, 0) << host.path() << ": " << result.errors;
        EXPECT_TRUE(found.empty()) << host.path() << listOf(found);
    }
}

// What the tests above would see: a scan of the live machine asks it all these.
TEST(ScanOfACopy, isSeenWhenItAsksThisMachine)
{
    if (!CallWatch::isPossible())
        GTEST_SKIP() << "no process can be watched here (seccomp)";
    ProgramResult result;
    const std::set<std::string> found = violations({"scan", "-o", "/dev/null"}, "/nowhere", result);
    EXPECT_EQ(result.status, 0) << result.errors;
    for (const char* expected : {"socket", "uname", "openat of /", "statx of /"})
        EXPECT_EQ(found.count(expected), 1u) << expected << " is not among" << listOf(found);
    const auto asksForSizes = [](const std::string& text) { return text.starts_with("statfs of /"); };
    EXPECT_TRUE(std::any_of(found.begin(), found.end(), asksForSizes)) << listOf(found);
}
