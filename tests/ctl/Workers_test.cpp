// Workers that die, hang or run wild while the whole program scans: each costs the rest of its own group, the scan ends
// within its deadline and half a second, and nobody who reads its output waits longer.

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/ctl/CallWatch.h"
#include "tests/ctl/SmallMachine.h"

using nlohmann::json;
using std::chrono::milliseconds;
using std::chrono::seconds;

namespace
{
constexpr int kPipe = 3; // of a worker
constexpr milliseconds kDeadline(1000);
constexpr milliseconds kBeyond(kIsSanitized ? 3000 : 500);

// A scan of the small machine, of whose workers some meet an accident: at the first bytes that they write.
class Accident : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!CallWatch::isPossible())
            GTEST_SKIP() << "no process can be watched here (seccomp)";
        addSmallMachine(tree_);
        whole_ = Program(arguments()).run().report()["groups"];
        ASSERT_GT(whole_.size(), 20u);
    }

    std::vector<std::string> arguments() const
    {
        return {"scan", "--root", tree_.folder(), "-f", "json", "--deadline", "1"};
    }

    // The worker-th to write meets what happen does. Other calls that are watched go to others.
    ProgramResult scan(
        size_t worker, const std::function<Verdict(const WatchedCall&)>& happen,
        const CallWatch::Decide& others = [](const WatchedCall&) { return Verdict(); })
    {
        std::map<pid_t, size_t> workers;
        CallWatch watch({SYS_write, SYS_kill, SYS_prctl}, false, [&, worker](const WatchedCall& call) {
            if (call.number != SYS_write || call.arguments[0] != kPipe)
                return others(call);
            const bool isFirst = workers.try_emplace(call.process, workers.size()).second;
            const bool isMeant = isFirst && (worker == kAll || workers[call.process] == worker);
            return isMeant ? happen(call) : Verdict();
        });
        Program program(arguments());
        return watch.run(program);
    }

    // All groups are as they were but so many, and these have a result and a reason that begins so.
    void expectLost(const ProgramResult& result, size_t expected, const std::string& told)
    {
        ASSERT_EQ(result.status, 0) << result.errors;
        json groups = result.report()["groups"];
        size_t lost = 0;
        for (const json& row : groups["ScanStatus"]) {
            const std::string reason = row["Result"].get<std::string>() + ": " + row.value("Reason", "");
            if (std::find(whole_["ScanStatus"].begin(), whole_["ScanStatus"].end(), row) != whole_["ScanStatus"].end())
                continue;
            EXPECT_TRUE(reason.starts_with(told)) << row;
            ++lost;
        }
        EXPECT_EQ(lost, expected);
        size_t different = 0;
        for (const auto& [name, rows] : whole_.items())
            different += name == "ScanStatus" || groups.value(name, json()) == rows ? 0 : 1;
        EXPECT_LE(different, expected);
    }

    static constexpr size_t kAll = SIZE_MAX;
    Tree tree_;
    json whole_;
};

Verdict die(const WatchedCall&)
{
    return {Verdict::Kind::Kill};
}

Verdict hang(const WatchedCall&)
{
    return {Verdict::Kind::Hang};
}

Verdict stop(const WatchedCall& call)
{
    kill(call.process, SIGSTOP);
    return {};
}

// Bytes in front of what the worker writes.
Verdict writeRubbish(const WatchedCall& call)
{
    const std::string path = "/proc/" + std::to_string(call.process) + "/fd/" + std::to_string(kPipe);
    const int pipe = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    const std::string rubbish(1000, '\xFE');
    EXPECT_EQ(write(pipe, rubbish.data(), rubbish.size()), static_cast<ssize_t>(rubbish.size()));
    close(pipe);
    return {};
}
} // namespace

TEST_F(Accident, killedWorkersCostTheirGroup)
{
    for (const size_t worker : {0u, 5u, 11u, 23u}) {
        const ProgramResult result = scan(worker, die);
        expectLost(result, 1, "Failed: ended by signal 9");
        EXPECT_LT(result.took, kDeadline + kBeyond);
    }
}

TEST_F(Accident, hungWorkersAreWaitedForUntilTheDeadline)
{
    for (const auto happen : {hang, stop}) {
        const ProgramResult result = scan(7, happen);
        expectLost(result, 1, "Timed Out: not ready after 1 s");
        EXPECT_GE(result.took, kDeadline);
        EXPECT_LT(result.took, kDeadline + kBeyond);
    }
}

TEST_F(Accident, allHungIsStillAReport)
{
    const ProgramResult result = scan(kAll, hang);
    ASSERT_EQ(result.status, 0) << result.errors;
    const json groups = result.report()["groups"];
    EXPECT_EQ(groups.size(), 1u) << "nothing but Scan Status";
    ASSERT_EQ(groups["ScanStatus"].size(), whole_["ScanStatus"].size());
    for (const json& row : groups["ScanStatus"])
        EXPECT_EQ(row["Result"], "Timed Out") << row;
    EXPECT_LT(result.took, kDeadline + kBeyond);
}

TEST_F(Accident, rubbishInAPipeCostsItsGroup)
{
    for (const size_t worker : {0u, 13u}) {
        const ProgramResult result = scan(worker, writeRubbish);
        expectLost(result, 1, "Failed: ended"); // by the scan, or because it had written all
        EXPECT_LT(result.took, kDeadline + kBeyond);
    }
}

// As a process in an uninterruptible call: no signal ends it, its parent's end neither.
TEST_F(Accident, workersThatNobodyCanEndAreLeftBehind)
{
    const auto nothingEndsIt = [](const WatchedCall& call) -> Verdict {
        const bool isDeathSignal = call.number == SYS_prctl && call.arguments[0] == PR_SET_PDEATHSIG;
        if (call.number == SYS_kill || isDeathSignal)
            return {Verdict::Kind::Answer, 0};
        return {};
    };
    const ProgramResult result = scan(3, hang, nothingEndsIt);
    expectLost(result, 1, "Timed Out: not ready after 1 s");
    EXPECT_LT(result.took, kDeadline + kBeyond);
}

// "invhwctl scan | cat": the reader sees the end when the scan ends, whoever is left behind.
TEST_F(Accident, aReaderSeesTheEndOfTheScan)
{
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    std::vector<pid_t> left;
    CallWatch watch({SYS_write, SYS_kill, SYS_prctl}, false, [&](const WatchedCall& call) -> Verdict {
        if (call.number == SYS_kill || (call.number == SYS_prctl && call.arguments[0] == PR_SET_PDEATHSIG))
            return {Verdict::Kind::Answer, 0};
        if (call.number == SYS_write && call.arguments[0] == kPipe && left.empty()) {
            left.push_back(call.process);
            return {Verdict::Kind::Hang};
        }
        return {};
    });
    Program program(arguments());
    fcntl(ends[1], F_SETPIPE_SZ, 1 << 20); // the whole report, as nobody reads before the end
    const ProgramResult result = watch.run(program, [&] { dup2(ends[1], STDOUT_FILENO); });
    close(ends[1]);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(left.size(), 1u);
    fcntl(ends[0], F_SETFL, O_NONBLOCK); // a writer that is left would make the last read fail with EAGAIN
    std::string text;
    char piece[65536];
    ssize_t got;
    while ((got = read(ends[0], piece, sizeof piece)) > 0)
        text.append(piece, static_cast<size_t>(got));
    EXPECT_EQ(got, 0) << "somebody still holds the pipe";
    EXPECT_TRUE(json::parse(text, nullptr, false).is_object());
    close(ends[0]);
}

TEST_F(Accident, aProcessThatCannotBeMadeCostsItsGroup)
{
    size_t made = 0;
    CallWatch watch({callNumber("clone"), callNumber("fork"), callNumber("vfork")}, false,
                    [&](const WatchedCall&) -> Verdict {
                        return ++made == 4 ? Verdict{Verdict::Kind::Fail, EAGAIN} : Verdict();
                    });
    Program program(arguments());
    const ProgramResult result = watch.run(program);
    expectLost(result, 1, "Failed: no process: Resource temporarily unavailable");
}
