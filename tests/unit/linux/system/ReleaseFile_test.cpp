#include "linux/system/ReleaseFile.h"

#include <gtest/gtest.h>

#include "tests/unit/linux/text/TextOf.h"

static std::string nameOf(std::string text)
{
    TextStream file = textOf(text);
    return readReleaseName(file);
}

TEST(ReleaseFile, theNewlineOfAOneLineFileBecomesATrailingBlank)
{
    EXPECT_EQ(nameOf("Red Hat Linux release 9 (Shrike)\n"), "Red Hat Linux release 9 (Shrike) ");
}

TEST(ReleaseFile, carriageReturnAndLineFeedBecomeOneBlank)
{
    EXPECT_EQ(nameOf("SuSE Linux 9.0\r\n"), "SuSE Linux 9.0 ");
}

TEST(ReleaseFile, twoLinesAreJoinedByOneBlank)
{
    EXPECT_EQ(nameOf("SuSE Linux 9.0 (i586)\nVERSION = 9.0"), "SuSE Linux 9.0 (i586) VERSION = 9.0");
}

TEST(ReleaseFile, blanksAreNoControlCharactersAndStay)
{
    EXPECT_EQ(nameOf("  a  b \t\x7f c"), "  a  b   c");
}

TEST(ReleaseFile, aNulEndsTheText)
{
    EXPECT_EQ(nameOf(std::string("abc\0def", 7)), "abc");
}

TEST(ReleaseFile, isCutAt254Bytes)
{
    EXPECT_EQ(nameOf(std::string(254, 'x') + "y"), std::string(254, 'x'));
    EXPECT_EQ(nameOf(std::string(254, 'x')), std::string(254, 'x'));
}

TEST(ReleaseFile, anEmptyFileGivesAnEmptyName)
{
    TextStream file = TextStream::openFile("/dev/null");
    EXPECT_EQ(readReleaseName(file), "");
}
