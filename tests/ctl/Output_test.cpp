// Where a report goes: readers that close, disks that are full, folders that may not be written, streams that are
// closed.

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/ctl/Program.h"
#include "tests/ctl/SmallMachine.h"
#include "tests/unit/host/Rights.h"

using nlohmann::json;

namespace
{
class Output : public testing::Test
{
protected:
    Output() { addSmallMachine(machine_); }

    std::vector<std::string> arguments(const std::string& file = "") const
    {
        std::vector<std::string> words{"scan", "--root", machine_.folder(), "-f", "json"};
        if (!file.empty())
            words.insert(words.end(), {"-o", file});
        return words;
    }

    Tree machine_;
    Tree folder_;
};

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

size_t filesIn(const std::string& folder)
{
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

bool isReport(const std::string& text)
{
    return json::parse(text, nullptr, false).is_object();
}

// One line that names the file; nothing on standard output.
void expectTrouble(const ProgramResult& result, const std::string& name, const std::string& error)
{
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_NE(result.errors.find(name + ": " + error), std::string::npos) << result.errors;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
}
} // namespace

TEST_F(Output, ofAReaderThatHasClosedEnds)
{
    for (const bool isIgnored : {false, true}) {
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        Program program(arguments());
        program.before([&] {
            signal(SIGPIPE, isIgnored ? SIG_IGN : SIG_DFL);
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
        });
        program.start();
        close(ends[0]);
        const ProgramResult result = program.finish();
        close(ends[1]);
        EXPECT_FALSE(result.timedOut);
        if (isIgnored)
            expectTrouble(result, "standard output", "Broken pipe");
        else
            EXPECT_EQ(result.signal, SIGPIPE);
    }
}

TEST_F(Output, toAFullDeviceIsTrouble)
{
    expectTrouble(Program(arguments("/dev/full")).run(), "/dev/full", "No space left on device");
    Program program(arguments());
    program.before([] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    expectTrouble(program.run(), "standard output", "No space left on device");
}

// A disk of one page; the report that stands there stays.
TEST_F(Output, toAFullDiskLeavesTheOldFileAndNothingElse)
{
    const std::string file = folder_.at("/report.json");
    Program program(arguments(file));
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    program.before([&] {
        const bool isPrivate =
            unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
        if (!isPrivate || mount("none", folder_.folder().c_str(), "tmpfs", 0, "size=8k") != 0)
            _exit(77);
        std::ofstream(file) << "old";
        // A child sees what is there at the end, in the same private place.
        if (fork() != 0) {
            int status = 0;
            wait(&status);
            dprintf(ends[1], "%d %s %zu", WEXITSTATUS(status), contentOf(file).c_str(), filesIn(folder_.folder()));
            _exit(WEXITSTATUS(status));
        }
    });
    const ProgramResult result = program.run();
    if (result.status == 77)
        GTEST_SKIP() << "no private mounts here";
    expectTrouble(result, file, "No space left on device");
    char left[64] = {};
    EXPECT_GT(read(ends[0], left, sizeof left - 1), 0);
    EXPECT_STREQ(left, "2 old 1");
    close(ends[0]);
    close(ends[1]);
}

TEST_F(Output, intoAFolderThatMayNotBeWrittenIsTrouble)
{
    chmod(folder_.folder().c_str(), 0555);
    const std::string file = folder_.at("/report.json");
    Program program(arguments(file));
    program.before([] { becomeOrdinaryUser(); });
    expectTrouble(program.run(), file, "Permission denied");
    const std::string nowhere = folder_.at("/none/report.json");
    expectTrouble(Program(arguments(nowhere)).run(), nowhere, "No such file or directory");
    expectTrouble(Program(arguments(folder_.folder())).run(), folder_.folder(), "Is a directory");
}

TEST_F(Output, isItsOwnersAlone)
{
    const std::string file = folder_.at("/report.json");
    folder_.file("/report.json", "old");
    Program program(arguments(file));
    program.before([] { umask(0); });
    EXPECT_EQ(program.run().status, 0);
    struct stat status;
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    EXPECT_TRUE(isReport(contentOf(file)));
    EXPECT_EQ(filesIn(folder_.folder()), 1u);
}

// Descriptors that are opened take the places of closed streams: nothing may land there.
TEST_F(Output, isWholeWhateverStreamsAreClosed)
{
    const std::string whole = Program(arguments()).run().output;
    ASSERT_TRUE(isReport(whole));
    const std::string file = folder_.at("/report.json");
    for (unsigned closed = 0; closed < 8; ++closed) {
        const auto closeStreams = [closed] {
            for (int stream = 0; stream < 3; ++stream)
                if ((closed >> stream & 1) != 0)
                    close(stream);
        };
        Program toFile(arguments(file));
        toFile.before(closeStreams);
        const ProgramResult result = toFile.run();
        EXPECT_EQ(result.status, 0) << closed << result.errors;
        EXPECT_EQ(contentOf(file), whole) << closed;
        EXPECT_EQ(result.output + result.errors, "") << closed;

        Program toStream(arguments());
        toStream.before(closeStreams);
        const ProgramResult streamed = toStream.run();
        const bool isOpen = (closed >> STDOUT_FILENO & 1) == 0;
        EXPECT_EQ(streamed.status, isOpen ? 0 : 2) << closed << streamed.errors;
        EXPECT_EQ(streamed.output, isOpen ? whole : "") << closed;
    }
}

// What is complained of goes to standard error or nowhere: not into a file that has its number.
TEST_F(Output, isNotMixedWithComplaints)
{
    const std::string file = folder_.at("/report.json");
    Program program({"scan", "--root", folder_.at("/none"), "-o", file});
    program.before([] { close(STDERR_FILENO); });
    EXPECT_EQ(program.run().status, 2);
    EXPECT_FALSE(std::filesystem::exists(file));
}
