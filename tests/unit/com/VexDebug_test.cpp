#include "com/VexDebug.h"

#include <climits>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "com/VexGroup.h"
#include "tests/unit/Capture.h"

// The log keeps its state for the whole process: every scenario runs in a child process, in a folder of its own.

namespace
{
constexpr char kLog[] = "libInvHW.log";
constexpr char kBackup[] = "libInvHW.log.bk";
const std::string kRule77(77, '-');
const std::string kRule78(78, '-');

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void writeFile(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

bool exists(const std::string& path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

void setMasks(uint32_t category, uint32_t level)
{
    _vexDebugCategory = category;
    _vexDebugLevel = level;
}

// Every line of a time as ctime writes it with the one word TIME for it, so that whole logs can be compared.
std::string withoutTimes(std::string log)
{
    const std::string label = "Time: ";
    for (size_t at = log.find(label); at != std::string::npos; at = log.find(label, at)) {
        at += label.size();
        struct tm time = {};
        const char* const end = strptime(log.c_str() + at, "%a %b %d %H:%M:%S %Y", &time);
        char again[26];
        if (end == nullptr || *end != '\n' || log.compare(at, 25, asctime_r(&time, again)) != 0)
            return log + "\n(not a time)";
        log.replace(at, 24, "TIME");
    }
    return log;
}

std::string capturedErrors(const std::function<void()>& action)
{
    fflush(stderr);
    const int saved = dup(STDERR_FILENO);
    FILE* const file = tmpfile();
    dup2(fileno(file), STDERR_FILENO);
    action();
    fflush(stderr);
    dup2(saved, STDERR_FILENO);
    close(saved);
    rewind(file);
    char text[4096];
    const size_t length = fread(text, 1, sizeof text, file);
    fclose(file);
    return std::string(text, length);
}

class DebugLog : public ::testing::Test
{
protected:
    void SetUp() override
    {
        char folder[] = "/tmp/invhw-debug-XXXXXX";
        ASSERT_NE(mkdtemp(folder), nullptr);
        folder_ = folder;
    }
    void TearDown() override
    {
        for (const char* name : {kLog, kBackup, "own.log", "own.log.bk", "target"})
            remove((folder_ + "/" + name).c_str());
        EXPECT_EQ(rmdir(folder_.c_str()), 0) << "an unexpected file was left in " << folder_;
    }
    // Runs scenario in a child process whose current folder is the test's own.
    void run(const std::function<void()>& scenario)
    {
        inChild([&] {
            ASSERT_EQ(chdir(folder_.c_str()), 0);
            scenario();
        });
    }

    std::string folder_;
};
} // namespace

TEST_F(DebugLog, fullLevelsFrameTheLogWithBannersAndTimes)
{
    run([] {
        setMasks(0xFFFFFFFF, 7);
        VexInitDebug(nullptr);
        VexPrintf("\nvalue %d", 5);
        VexTermDebug();
        EXPECT_EQ(withoutTimes(readFile(kLog)), "\n/" + kRule78 + "\\\nStart Time: TIME\n" + "\nvalue 5" +
                                                    "\n\nEnd   Time: TIME\n" + "\\" + kRule78 + "/");
        EXPECT_EQ(_vexFilePtr, nullptr);
    });
}

TEST_F(DebugLog, levelOneAloneOpensButDoesNotClose)
{
    run([] {
        setMasks(0xFFFFFFFF, 1);
        VexInitDebug("");
        VexTermDebug();
        EXPECT_EQ(withoutTimes(readFile(kLog)), "\n/" + kRule78 + "\\\nStart Time: TIME\n");
    });
}

TEST_F(DebugLog, levelFourAloneClosesButDoesNotOpen)
{
    run([] {
        setMasks(2, 4);
        VexInitDebug(nullptr);
        VexTermDebug();
        EXPECT_EQ(withoutTimes(readFile(kLog)), "\n\nEnd   Time: TIME\n\\" + kRule78 + "/");
    });
}

TEST_F(DebugLog, categoryZeroLeavesAnEmptyLog)
{
    run([] {
        setMasks(0, 7);
        VexInitDebug(nullptr);
        VEX_LOG(DEBUG_MEMORY, VEX_LEVEL_MAIN, "\nnever");
        {
            const VexGroupFrame frame(DEBUG_MEMORY, "Memory");
        }
        VexTermDebug();
        EXPECT_TRUE(exists(kLog));
        EXPECT_EQ(readFile(kLog), "");
    });
}

TEST_F(DebugLog, linesAreWantedByCategoryAndLevelBit)
{
    run([] {
        setMasks(DEBUG_MEMORY | DEBUG_STORAGE, 4);
        EXPECT_TRUE(vexDebugWanted(DEBUG_MEMORY, VEX_LEVEL_DETAIL));
        EXPECT_TRUE(vexDebugWanted(DEBUG_STORAGE | DEBUG_LPAR, VEX_LEVEL_DETAIL));
        EXPECT_FALSE(vexDebugWanted(DEBUG_MEMORY, VEX_LEVEL_MAIN));
        EXPECT_FALSE(vexDebugWanted(DEBUG_LPAR, VEX_LEVEL_DETAIL));
    });
}

TEST_F(DebugLog, argumentsOfAnUnwantedLineAreNotEvaluated)
{
    run([] {
        int evaluated = 0;
        setMasks(DEBUG_MEMORY, 4);
        VEX_LOG(DEBUG_MEMORY, VEX_LEVEL_MAIN, "\n%d", ++evaluated);
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n%d", ++evaluated);
        EXPECT_EQ(evaluated, 0);
        VEX_LOG(DEBUG_MEMORY, VEX_LEVEL_DETAIL, "\n%d", ++evaluated);
        EXPECT_EQ(evaluated, 1);
        EXPECT_EQ(readFile(kLog), "\n1");
    });
}

TEST_F(DebugLog, firstLineOpensTheLogUnderItsDefaultName)
{
    run([] {
        setMasks(0xFFFFFFFF, 7);
        EXPECT_EQ(VexPrintf("\nfirst"), 0);
        EXPECT_EQ(withoutTimes(readFile(kLog)), "\n/" + kRule78 + "\\\nStart Time: TIME\n\nfirst");
        VexTermDebug();
        EXPECT_EQ(_vexFilePtr, nullptr);
    });
}

TEST_F(DebugLog, secondTermClosesWhatTwoInitsOpened)
{
    run([] {
        setMasks(0xFFFFFFFF, 1);
        VexInitDebug(nullptr);
        VexInitDebug("own.log");
        EXPECT_FALSE(exists("own.log"));
        VexTermDebug();
        ASSERT_NE(_vexFilePtr, nullptr);
        EXPECT_EQ(VexPrintf("\nstill open"), 0);
        VexTermDebug();
        EXPECT_EQ(_vexFilePtr, nullptr);
        EXPECT_NE(readFile(kLog).find("\nstill open"), std::string::npos);
    });
}

TEST_F(DebugLog, unmatchedTermDoesNoHarm)
{
    run([] {
        setMasks(0xFFFFFFFF, 7);
        VexTermDebug();
        VexTermDebug();
        EXPECT_FALSE(exists(kLog));
        // The count is below 0 now: no sink is set, the text goes nowhere.
        EXPECT_EQ(VexPrintf("\nlost"), 0);
        EXPECT_FALSE(exists(kLog));
    });
}

TEST_F(DebugLog, everyLineIsInTheFileAtOnce)
{
    run([] {
        setMasks(0xFFFFFFFF, 4);
        VexInitDebug(nullptr);
        VexPrintf("one");
        EXPECT_EQ(readFile(kLog), "one");
        VexPrintf(" two");
        EXPECT_EQ(readFile(kLog), "one two");
    });
}

TEST_F(DebugLog, previousLogBecomesTheBackup)
{
    writeFile(folder_ + "/" + kLog, "previous");
    writeFile(folder_ + "/" + kBackup, "older");
    run([] {
        VexInitDebug(nullptr);
        VexPrintf("new");
        VexTermDebug();
    });
    EXPECT_EQ(readFile(folder_ + "/" + kLog), "new");
    EXPECT_EQ(readFile(folder_ + "/" + kBackup), "previous");
}

TEST_F(DebugLog, backupStaysWhereThereIsNoPreviousLog)
{
    writeFile(folder_ + "/" + kBackup, "older");
    run([] {
        VexInitDebug(nullptr);
        VexTermDebug();
    });
    EXPECT_EQ(readFile(folder_ + "/" + kBackup), "older");
    EXPECT_EQ(readFile(folder_ + "/" + kLog), "");
}

TEST_F(DebugLog, firstRunMakesNoBackup)
{
    run([] {
        VexInitDebug(nullptr);
        VexTermDebug();
        EXPECT_FALSE(exists(kBackup));
    });
}

TEST_F(DebugLog, givenNameIsUsedAndRotated)
{
    writeFile(folder_ + "/own.log", "previous");
    run([] {
        VexInitDebug("own.log");
        VexPrintf("new");
        VexTermDebug();
        EXPECT_FALSE(exists(kLog));
    });
    EXPECT_EQ(readFile(folder_ + "/own.log"), "new");
    EXPECT_EQ(readFile(folder_ + "/own.log.bk"), "previous");
}

TEST_F(DebugLog, lineOf2047BytesIsWhole)
{
    run([] {
        VexInitDebug(nullptr);
        const std::string line(2047, 'x');
        VexPrintf("%s", line.c_str());
        EXPECT_EQ(readFile(kLog), line);
    });
}

TEST_F(DebugLog, longerLinesAreCutAfter2047Bytes)
{
    run([] {
        VexInitDebug(nullptr);
        VexPrintf("%s", std::string(2048, 'y').c_str());
        EXPECT_EQ(readFile(kLog), std::string(2047, 'y'));
        VexPrintf("%s%s", std::string(100000, 'z').c_str(), "end");
        EXPECT_EQ(readFile(kLog), std::string(2047, 'y') + std::string(2047, 'z'));
    });
}

TEST_F(DebugLog, linkPlantedUnderItsNameIsNotFollowed)
{
    // A link to a file that is not there yet: rotation has nothing to move, so the link meets the opening.
    ASSERT_EQ(symlink("target", (folder_ + "/" + kLog).c_str()), 0);
    run([] {
        setMasks(0xFFFFFFFF, 7);
        EXPECT_EQ(capturedErrors([] { VexInitDebug(nullptr); }), "The libInvHW.log file is read only.\n");
        EXPECT_FALSE(exists("target"));
        EXPECT_EQ(_vexLogToFile, 0U);
        EXPECT_EQ(VexPrintf("\nlost"), 0);
        VexTermDebug();
    });
}

TEST_F(DebugLog, linkToAnExistingFileIsRotatedAwayAndItsTargetKept)
{
    writeFile(folder_ + "/target", "precious");
    ASSERT_EQ(symlink("target", (folder_ + "/" + kLog).c_str()), 0);
    run([] {
        VexInitDebug(nullptr);
        VexPrintf("new");
        VexTermDebug();
    });
    EXPECT_EQ(readFile(folder_ + "/target"), "precious");
    EXPECT_EQ(readFile(folder_ + "/" + kLog), "new");
}

TEST_F(DebugLog, unwritableFolderIsSaidOnceAndTheRunGoesOn)
{
    run([] {
        ASSERT_EQ(chmod(".", 0555), 0);
        if (geteuid() == 0) {
            ASSERT_EQ(seteuid(65534), 0);
        }
        setMasks(0xFFFFFFFF, 7);
        EXPECT_EQ(capturedErrors([] {
                      VexInitDebug(nullptr);
                      VexPrintf("\nlost");
                      VexTermDebug();
                      VexInitDebug(nullptr);
                      VexTermDebug();
                  }),
                  "The libInvHW.log file is read only.\n");
        EXPECT_FALSE(exists(kLog));
    });
    chmod(folder_.c_str(), 0755);
}

TEST_F(DebugLog, nameInTheMessageIsTheGivenOne)
{
    run([] {
        EXPECT_EQ(capturedErrors([] { VexInitDebug("missing/own.log"); }), "The missing/own.log file is read only.\n");
    });
}

TEST_F(DebugLog, nameLongerThanAnyPathDoesNotOverflow)
{
    run([] {
        const std::string name(5000, 'n');
        const std::string errors = capturedErrors([&] { VexInitDebug(name.c_str()); });
        EXPECT_EQ(errors, "The " + name.substr(0, 2047) + " file is read only.\n");
    });
}

TEST_F(DebugLog, failedWriteIsTheSinksResult)
{
    run([] {
        _vexFilePtr = fopen("/dev/full", "w");
        ASSERT_NE(_vexFilePtr, nullptr);
        setvbuf(_vexFilePtr, nullptr, _IONBF, 0);
        EXPECT_EQ(VexOutput("text"), 1);
        _vexLogToFile = 0;
        EXPECT_EQ(VexOutput("text"), 0);
    });
}

TEST_F(DebugLog, groupFrameHas77HyphensAndItsNames)
{
    run([] {
        setMasks(DEBUG_MEMORY, 1);
        VexInitDebug("own.log");
        const size_t start = readFile("own.log").size();
        {
            const VexGroupFrame frame(DEBUG_MEMORY, "Memory");
            VEX_LOG(DEBUG_MEMORY, VEX_LEVEL_MAIN, "\ninside");
        }
        EXPECT_EQ(readFile("own.log").substr(start), "\n\n/" + kRule77 + "\\\nBegin Group Memory getTable()\ninside" +
                                                         "\nEnd Group Memory getTable()\n\\" + kRule77 + "/\n");
    });
}

TEST_F(DebugLog, groupFrameClosesOnceAndUnderItsLastName)
{
    run([] {
        setMasks(DEBUG_LPAR, 1);
        VexInitDebug("own.log");
        const size_t start = readFile("own.log").size();
        {
            VexGroupFrame frame(DEBUG_LPAR, "First");
            frame.rename("Second");
            frame.close();
            VEX_LOG(DEBUG_LPAR, VEX_LEVEL_MAIN, "after");
            frame.close();
        }
        EXPECT_EQ(readFile("own.log").substr(start), "\n\n/" + kRule77 + "\\\nBegin Group First getTable()" +
                                                         "\nEnd Group Second getTable()\n\\" + kRule77 + "/\nafter");
    });
}

TEST_F(DebugLog, groupFrameNeedsTheMainLevel)
{
    run([] {
        setMasks(DEBUG_LPAR, 4);
        VexInitDebug("own.log");
        {
            const VexGroupFrame frame(DEBUG_LPAR, "Lpar");
        }
        EXPECT_EQ(readFile("own.log"), "");
    });
}
