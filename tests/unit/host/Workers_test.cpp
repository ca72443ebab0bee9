#include "host/Workers.h"

#include <cerrno>
#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <poll.h>
#include <string>
#include <sys/syscall.h>

#include "tests/unit/Capture.h"
#include "tests/unit/host/Rights.h"

using namespace host;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using End = Workers::End;

namespace
{
// What came of workers: their bytes and ends, and how long it took.
struct Served {
    std::map<size_t, std::string> bytes;
    std::map<size_t, Workers::Result> ends;
    bool inTime = false;
    milliseconds took{};
};

Served serve(Workers& workers, milliseconds time, const std::function<bool(const std::string&)>& isWanted = {})
{
    Served served;
    const Clock::time_point begin = Clock::now();
    served.inTime = workers.serve(
        begin + time,
        [&](size_t worker, std::string_view bytes) {
            served.bytes[worker] += bytes;
            return !isWanted || isWanted(served.bytes[worker]);
        },
        [&](size_t worker, Workers::Result result) { EXPECT_TRUE(served.ends.emplace(worker, result).second); });
    served.took = std::chrono::duration_cast<milliseconds>(Clock::now() - begin);
    return served;
}

void sleepForEver(int)
{
    for (;;)
        pause();
}

// Time that a machine which is busy with other things needs besides.
constexpr milliseconds kSlack(400);
constexpr milliseconds kLong(20000);
} // namespace

TEST(Workers, whatTheyWriteComesBackWholeAndInOrder)
{
    Workers workers;
    std::string large;
    for (int i = 0; i < 300000; ++i)
        large += static_cast<char>('a' + i % 26);
    EXPECT_EQ(workers.start([&](int pipe) { EXPECT_TRUE(writeAll(pipe, large)); }), 0u);
    EXPECT_EQ(workers.start([](int pipe) { writeAll(pipe, "two"); }), 1u);
    EXPECT_EQ(workers.start([](int) {}), 2u);
    const Served served = serve(workers, kLong);
    EXPECT_TRUE(served.inTime);
    EXPECT_EQ(served.bytes.at(0), large);
    EXPECT_EQ(served.bytes.at(1), "two");
    EXPECT_EQ(served.bytes.count(2), 0u);
    ASSERT_EQ(served.ends.size(), 3u);
    for (const auto& [worker, result] : served.ends) {
        EXPECT_EQ(result.end, End::Exited);
        EXPECT_EQ(result.code, 0);
    }
}

TEST(Workers, thatDieCostNothingButTheirOwn)
{
    Workers workers;
    workers.start([](int pipe) {
        writeAll(pipe, "before");
        raise(SIGKILL);
    });
    workers.start([](int pipe) {
        writeAll(pipe, "exits");
        _exit(3);
    });
    workers.start([](int) {
        signal(SIGSEGV, SIG_DFL);
        raise(SIGSEGV);
    });
    workers.start([](int pipe) { writeAll(pipe, "well"); });
    const Served served = serve(workers, kLong);
    EXPECT_TRUE(served.inTime);
    EXPECT_EQ(served.bytes.at(0), "before");
    EXPECT_EQ(served.ends.at(0).end, End::Crashed);
    EXPECT_EQ(served.ends.at(0).code, SIGKILL);
    EXPECT_EQ(served.bytes.at(1), "exits");
    EXPECT_EQ(served.ends.at(1).end, End::Exited);
    EXPECT_EQ(served.ends.at(1).code, 3);
    EXPECT_EQ(served.ends.at(2).end, End::Crashed);
    EXPECT_EQ(served.bytes.at(3), "well");
}

TEST(Workers, thatHangAreEndedAtTheDeadlineAndKeepWhatTheyWrote)
{
    Workers workers;
    workers.start([](int pipe) {
        writeAll(pipe, "safe");
        sleepForEver(pipe);
    });
    workers.start([](int pipe) { writeAll(pipe, "done"); });
    const Served served = serve(workers, milliseconds(300));
    EXPECT_FALSE(served.inTime);
    EXPECT_GE(served.took, milliseconds(300));
    EXPECT_LT(served.took, milliseconds(300) + kSlack);
    EXPECT_EQ(served.bytes.at(0), "safe");
    EXPECT_EQ(served.ends.at(0).end, End::TimedOut);
    EXPECT_EQ(served.ends.at(1).end, End::Exited);
}

TEST(Workers, thatWriteWithoutEndAreEndedWhenNobodyWantsTheirBytes)
{
    Workers workers;
    workers.start([](int pipe) {
        while (writeAll(pipe, std::string(4096, 'x'))) {
        }
    });
    const Served served = serve(workers, kLong, [](const std::string& bytes) { return bytes.size() < 100000; });
    EXPECT_TRUE(served.inTime);
    EXPECT_LT(served.took, kLong / 2);
    EXPECT_EQ(served.ends.at(0).end, End::Crashed);
    EXPECT_EQ(served.ends.at(0).code, SIGKILL);
}

TEST(Workers, thatWriteWithoutEndAreEndedAtTheDeadline)
{
    Workers workers;
    workers.start([](int pipe) {
        while (writeAll(pipe, std::string(4096, 'x'))) {
        }
    });
    const Served served = serve(workers, milliseconds(200));
    EXPECT_FALSE(served.inTime);
    EXPECT_LT(served.took, milliseconds(200) + kSlack);
    EXPECT_EQ(served.ends.at(0).end, End::TimedOut);
}

// Each may take its time to end behind its closed pipe; they do so side by side, and hold nobody up.
TEST(Workers, thatCloseTheirPipeAndSleepHoldNobodyUp)
{
    Workers workers;
    for (int i = 0; i < 40; ++i)
        workers.start([](int pipe) {
            close(pipe);
            sleepForEver(pipe);
        });
    workers.start([](int pipe) { writeAll(pipe, "well"); });
    const Served served = serve(workers, milliseconds(400));
    EXPECT_LT(served.took, milliseconds(400) + kSlack);
    ASSERT_EQ(served.ends.size(), 41u);
    for (size_t i = 0; i < 40; ++i)
        EXPECT_EQ(served.ends.at(i).end, End::TimedOut) << i;
    EXPECT_EQ(served.ends.at(40).end, End::Exited);
    EXPECT_EQ(served.bytes.at(40), "well");
}

TEST(Workers, thatEndSoonAfterTheirPipeAreWaitedFor)
{
    Workers workers;
    workers.start([](int pipe) {
        close(pipe);
        poll(nullptr, 0, 20);
        _exit(5);
    });
    const Served served = serve(workers, kLong);
    EXPECT_TRUE(served.inTime);
    EXPECT_EQ(served.ends.at(0).end, End::Exited);
    EXPECT_EQ(served.ends.at(0).code, 5);
}

TEST(Workers, fortyThatHangEndTogether)
{
    Workers workers;
    for (int i = 0; i < 40; ++i)
        workers.start([](int pipe) {
            writeAll(pipe, "row");
            sleepForEver(pipe);
        });
    const Served served = serve(workers, milliseconds(500));
    EXPECT_FALSE(served.inTime);
    EXPECT_LT(served.took, milliseconds(500) + kSlack);
    ASSERT_EQ(served.ends.size(), 40u);
    for (size_t i = 0; i < 40; ++i) {
        EXPECT_EQ(served.bytes.at(i), "row");
        EXPECT_EQ(served.ends.at(i).end, End::TimedOut);
    }
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "all are reaped";
    EXPECT_EQ(errno, ECHILD);
}

// A program may be started with its children's ends ignored.
TEST(Workers, tellTheirEndsWhateverWasInherited)
{
    inChild([] {
        signal(SIGCHLD, SIG_IGN);
        Workers workers;
        workers.start([](int) { _exit(4); });
        const Served served = serve(workers, kLong);
        EXPECT_EQ(served.ends.at(0).end, End::Exited);
        EXPECT_EQ(served.ends.at(0).code, 4);
    });
}

TEST(Workers, thatCannotStartAreToldOf)
{
    inChild([] {
        denyCall(SYS_clone, EAGAIN);
        Workers workers;
        workers.start([](int) {});
        const Served served = serve(workers, kLong);
        EXPECT_TRUE(served.inTime);
        ASSERT_EQ(served.ends.size(), 1u);
        EXPECT_EQ(served.ends.at(0).end, End::NotStarted);
        EXPECT_EQ(served.ends.at(0).code, EAGAIN);
    });
}

TEST(Workers, askedToTickDoSo)
{
    Workers workers;
    workers.start([](int) { poll(nullptr, 0, 200); });
    int ticks = 0;
    EXPECT_TRUE(workers.serve(
        Clock::now() + kLong, [](size_t, std::string_view) { return true; }, [](size_t, Workers::Result) {}, 10,
        [&] { ++ticks; }));
    EXPECT_GE(ticks, 3);
}

namespace
{
// The descriptors that a worker has, the one that lists them left out, with what they are: "0=/dev/null ".
std::string openDescriptors()
{
    std::string text;
    DIR* const folder = opendir("/proc/self/fd");
    while (const dirent* entry = readdir(folder)) {
        char target[256] = {};
        const std::string path = std::string("/proc/self/fd/") + entry->d_name;
        if (entry->d_name[0] == '.' || readlink(path.c_str(), target, sizeof target - 1) == -1 ||
            atoi(entry->d_name) == dirfd(folder))
            continue;
        text += std::string(entry->d_name) + '=' + (strncmp(target, "pipe:", 5) == 0 ? "pipe" : target) + ' ';
    }
    closedir(folder);
    return text;
}

void expectOnlyThePipe()
{
    const int high = fcntl(STDOUT_FILENO, F_DUPFD, 700);
    ASSERT_EQ(high, 700);
    Workers workers;
    workers.start(sleepForEver);
    workers.start([](int pipe) { writeAll(pipe, openDescriptors()); });
    const Served served = serve(workers, milliseconds(300));
    EXPECT_EQ(served.bytes.at(1), "0=/dev/null 1=/dev/null 2=/dev/null 3=pipe ");
    close(high);
}
} // namespace

TEST(Workers, holdTheirPipeAndNothingElse)
{
    expectOnlyThePipe();
}

// Kernels before 5.9.
TEST(Workers, holdNothingElseWhereRangesCannotBeClosed)
{
    inChild([] {
        denyCall(SYS_close_range, ENOSYS);
        expectOnlyThePipe();
    });
}

// A reader of our output sees its end when we are gone, whatever hangs.
TEST(Workers, doNotHoldTheParentsStandardStreams)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        close(ends[1]);
        Workers workers;
        workers.start([](int pipe) {
            prctl(PR_SET_PDEATHSIG, 0); // as one that the kernel holds
            close(pipe);
            poll(nullptr, 0, 1500);
        });
        close(STDOUT_FILENO);
        close(STDERR_FILENO);
        poll(nullptr, 0, 1000);
        _exit(0);
    }
    close(ends[1]);
    pollfd end{ends[0], POLLIN, 0};
    EXPECT_EQ(poll(&end, 1, 900), 1) << "the end of the output comes while parent and worker still live";
    char byte;
    EXPECT_EQ(read(ends[0], &byte, 1), 0);
    close(ends[0]);
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
}

TEST(WriteAll, isFalseWhenNobodyReads)
{
    inChild([] {
        signal(SIGPIPE, SIG_IGN);
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        EXPECT_TRUE(writeAll(ends[1], "x"));
        EXPECT_TRUE(writeAll(ends[1], ""));
        close(ends[0]);
        EXPECT_FALSE(writeAll(ends[1], "x"));
    });
}
