#include "linux/TextParse.h"

#include <cstring>
#include <gtest/gtest.h>

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
