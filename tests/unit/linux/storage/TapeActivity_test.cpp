#include "linux/storage/TapeActivity.h"

#include <gtest/gtest.h>

#include "tests/unit/LogCapture.h"
#include "tests/unit/linux/text/TextOf.h"

static int listed(std::string text)
{
    TextStream processes = textOf(text);
    return listsTapeProcess(processes);
}

static int matches(std::string line, const char* word)
{
    return getExactMatch(line.data(), word);
}

TEST(TapeActivity, theWordMustBeTheLastOnItsLine)
{
    EXPECT_EQ(matches("root 1 /usr/sbin/save\n", "save"), 1);
    EXPECT_EQ(matches("root 1 save", "save"), 1);
    EXPECT_EQ(matches("root 1 saved\n", "save"), 0);
    EXPECT_EQ(matches("root 1 save x\n", "save"), 0);
    EXPECT_EQ(matches("root 1 bash\n", "save"), 0);
}

TEST(TapeActivity, onlyTheFirstOccurrenceOfTheWordIsLookedAt)
{
    EXPECT_EQ(matches("saver save\n", "save"), 0);
}

TEST(TapeActivity, theRestOfTheLineIsLoggedAndCutAtTheNewline)
{
    const LogCapture log;
    char line[] = "root saved\nx";
    EXPECT_EQ(getExactMatch(line, "save"), 0);
    EXPECT_STREQ(line, "root saved");
    EXPECT_EQ(getExactMatch(line, "recover"), 0);
    EXPECT_EQ(log.text(), "\n pdest=saved\n");
}

TEST(TapeActivity, aNewlineTooFarAwayStays)
{
    const std::string farLine = "save" + std::string(252, 'x') + "\n";
    std::string line = farLine;
    EXPECT_EQ(getExactMatch(line.data(), "save"), 0);
    EXPECT_EQ(line, farLine);
    std::string nearer = "save" + std::string(251, 'x') + "\n";
    EXPECT_EQ(getExactMatch(nearer.data(), "save"), 0);
    EXPECT_EQ(nearer[255], '\0');
}

TEST(TapeActivity, everyBackupAndRestoreProcessCounts)
{
    EXPECT_EQ(listed("UID PID CMD\nroot 7 /usr/bin/save\n"), 1);
    EXPECT_EQ(listed("root 7 /usr/bin/recover\n"), 1);
    EXPECT_EQ(listed("root 7 nsrclone\n"), 1);
    EXPECT_EQ(listed("root 7 nsrstage\n"), 1);
}

TEST(TapeActivity, saveWithItsServerOptionCountsAnywhereInALine)
{
    EXPECT_EQ(listed("root 7 save -s server -g group /home\n"), 1);
    EXPECT_EQ(listed("root 7 autosave -server\n"), 1);
}

TEST(TapeActivity, otherProcessesDoNot)
{
    EXPECT_EQ(listed("root 7 /usr/sbin/saved\nroot 8 nsrexecd\nroot 9 recover x\n"), 0);
    EXPECT_EQ(listed("\n"), 0);
}
