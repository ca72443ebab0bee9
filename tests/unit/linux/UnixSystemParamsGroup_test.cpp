#include "linux/UnixSystemParamsGroup.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/unit/linux/text/TextOf.h"

static int32_t runLevelOf(std::string text)
{
    TextStream stream = textOf(text);
    return readRunLevel(stream);
}

TEST(UnixSystemParams, theThirdCharacterIsTheRunLevel)
{
    EXPECT_EQ(runLevelOf("N 5\n"), 5);
    EXPECT_EQ(runLevelOf("3 0\n"), 0);
    EXPECT_EQ(runLevelOf("N 3"), 3);
}

TEST(UnixSystemParams, theLetterOfAnUnknownRunLevelIsCountedFromZero)
{
    EXPECT_EQ(runLevelOf("unknown\n"), 'k' - '0');
    EXPECT_EQ(runLevelOf("N S\n"), 'S' - '0');
    EXPECT_EQ(runLevelOf("N \n"), '\n' - '0');
    EXPECT_EQ(runLevelOf("\xff\xff\xff"), -1 - '0') << "characters are signed";
}

TEST(UnixSystemParams, withoutALineTheRunLevelIs0)
{
    TextStream nothing(nullptr);
    EXPECT_EQ(readRunLevel(nothing), 0);
    TextStream empty = TextStream::openFile("/dev/null");
    EXPECT_EQ(readRunLevel(empty), 0);
}

TEST(UnixSystemParams, aLineOfFewerThanThreeCharactersGivesRunLevel0)
{
    EXPECT_EQ(runLevelOf("\n"), 0);
    EXPECT_EQ(runLevelOf("N\n"), 0);
    EXPECT_EQ(runLevelOf("N5"), 0);
    EXPECT_EQ(runLevelOf(std::string("\0\0005", 3)), 0) << "a NUL ends the line";
}

TEST(UnixSystemParams, onlyTheFirstLineCounts)
{
    EXPECT_EQ(runLevelOf("N 2\nN 5\n"), 2);
    EXPECT_EQ(runLevelOf(std::string(100000, 'x')), 'x' - '0');
}
