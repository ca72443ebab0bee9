#include "linux/text/TextParse.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace
{

std::string trimmed(std::string text)
{
    trim2(text.data());
    return text.c_str();
}

} // namespace

TEST(TextParse, longsAreReadAsWithA32BitLong)
{
    static const struct {
        const char* text;
        int32_t value;
    } cases[] = {
        {"0", 0},
        {"42", 42},
        {"  -7x", -7},
        {"+5", 5},
        {"", 0},
        {"x", 0},
        {"- 5", 0},
        {"2147483647", INT32_MAX},
        {"2147483648", INT32_MAX},
        {"-2147483648", INT32_MIN},
        {"-2147483649", INT32_MIN},
        {"99999999999999999999999", INT32_MAX},
        {"-99999999999999999999999", INT32_MIN},
        {"0x10", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parseLong(c.text), c.value) << c.text;
}

TEST(TextParse, unsignedLongsAreReadAsWithA32BitLong)
{
    static const struct {
        const char* text;
        int base;
        uint32_t value;
    } cases[] = {
        {"0", 10, 0},
        {"4294967295", 10, UINT32_MAX},
        {"4294967296", 10, UINT32_MAX},
        {"99999999999999999999999", 10, UINT32_MAX},
        {"-1", 10, UINT32_MAX},
        {"-4294967295", 10, 1},
        {"-4294967296", 10, UINT32_MAX},
        {" \t+17 kB", 10, 17},
        {"-", 10, 0},
        {"--1", 10, 0},
        {"- 1", 10, 0},
        {"", 10, 0},
        {"8086", 16, 0x8086},
        {"0x1F", 16, 0x1F},
        {"ffffffffff", 16, UINT32_MAX},
        {"fred", 10, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parseULong(c.text, c.base), c.value) << c.text;
}

TEST(TextParse, aNumberIsReadAndPassed)
{
    static const struct {
        const char* text;
        int base;
        bool read;
        uint32_t value;
        const char* rest;
    } cases[] = {
        {"12 34", 10, true, 12, " 34"},
        {" \t-1x", 10, true, UINT32_MAX, "x"},
        {"99999999999999999999999,", 10, true, UINT32_MAX, ","},
        {"80fg", 16, true, 0x80F, "g"},
        {"x12", 10, false, 7, "x12"},
        {"- 1", 10, false, 7, "- 1"},
        {"", 10, false, 7, ""},
    };
    for (const auto& c : cases) {
        const char* text = c.text;
        uint32_t value = 7;
        EXPECT_EQ(readULong(&text, &value, c.base), c.read) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
        EXPECT_STREQ(text, c.rest) << c.text;
    }
}

TEST(TextParse, aPartIsFoundAnywhereInTheText)
{
    EXPECT_TRUE(contains("abc", "abc"));
    EXPECT_TRUE(contains("abc", "bc"));
    EXPECT_TRUE(contains("abc", ""));
    EXPECT_FALSE(contains("abc", "ac"));
    EXPECT_FALSE(contains("abc", "abcd"));
    EXPECT_FALSE(contains("", "a"));
}

TEST(TextParse, onlyTheLastControlCharacterIsDropped)
{
    static const struct {
        const char* line;
        const char* rest;
    } cases[] = {{"abc\n", "abc"}, {"abc\r\n", "abc\r"}, {"abc", "abc"}, {"\n", ""}, {"", ""}, {"a b ", "a b "}};
    for (const auto& c : cases) {
        char line[16];
        strcpy(line, c.line);
        dropTrailingControl(line);
        EXPECT_STREQ(line, c.rest);
    }
}

TEST(Trim2, stripsBothEndsAndNothingBetween)
{
    EXPECT_EQ(trimmed("  ST336607 LC \t\n\v\f\r"), "ST336607 LC");
    EXPECT_EQ(trimmed("\t\n\v\f\r x"), "x");
    EXPECT_EQ(trimmed("x"), "x");
}

TEST(Trim2, anAllBlankTextBecomesEmpty)
{
    EXPECT_EQ(trimmed(" \t \n"), "");
    EXPECT_EQ(trimmed(""), "");
}
