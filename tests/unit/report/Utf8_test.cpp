#include "report/Utf8.h"

#include <gtest/gtest.h>

using namespace report;

TEST(ValidUtf8, keepsWellFormedTextAndReplacesTheRest)
{
    static const struct {
        std::string_view bytes, text;
    } cases[] = {
        {"", ""},
        {"plain\ttext\r\n", "plain\ttext\r\n"},
        {"gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F"},
        {"\xF0\x9F\x96\xA5", "\xF0\x9F\x96\xA5"},
        {"\xF4\x8F\xBF\xBD", "\xF4\x8F\xBF\xBD"},
        {std::string_view("a\0b", 3), "a\xEF\xBF\xBD"
                                      "b"},
        {"\x1B[31m", "\xEF\xBF\xBD[31m"},
        {"\x7F", "\x7F"},
        {"gr\xFC", "gr\xEF\xBF\xBD"},                                             // Latin-1
        {"\xC3", "\xEF\xBF\xBD"},                                                 // cut off
        {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},                                 // overlong
        {"\xE0\x80\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},                 // overlong
        {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},                 // a surrogate
        {"\xF4\x90\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}, // beyond U+10FFFF
        {"\xEF\xBF\xBE\xEF\xBF\xBF", "\xEF\xBF\xBD\xEF\xBF\xBD"},                 // noncharacters
        {"\x80", "\xEF\xBF\xBD"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(validUtf8(c.bytes), c.text);
}

TEST(FirstCharacters, countsCharactersNotBytes)
{
    EXPECT_EQ(firstCharacters("abc", 2), "ab");
    EXPECT_EQ(firstCharacters("abc", 3), "abc");
    EXPECT_EQ(firstCharacters("abc", 9), "abc");
    EXPECT_EQ(firstCharacters("\xC3\xBC\xC3\x9F", 1), "\xC3\xBC");
    EXPECT_EQ(firstCharacters("\xF0\x9F\x96\xA5!", 1), "\xF0\x9F\x96\xA5");
    EXPECT_EQ(firstCharacters("abc", 0), "");
}
