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

TEST(VisibleText, showsWhatDoesSomethingByItsNumber)
{
    static const struct {
        const char* text;
        const char* visible;
    } cases[] = {
        {"", ""},
        {"plain \xC3\xA4 \xE6\x97\xA5 \xF0\x9F\x98\x80", "plain \xC3\xA4 \xE6\x97\xA5 \xF0\x9F\x98\x80"},
        {"\033[31m\a\b\r\n\t\x7F", "<U+001B>[31m<U+0007><U+0008><U+000D><U+000A><U+0009><U+007F>"},
        {"\xC2\x9B\xC2\x85\xC2\xA0", "<U+009B><U+0085>\xC2\xA0"},
        {"\xE2\x80\xA8\xE2\x80\xAE\xE2\x81\xA6\xEF\xBB\xBF", "<U+2028><U+202E><U+2066><U+FEFF>"},
        {"\xE2\x80\x8D", "\xE2\x80\x8D"}, // a joiner, which writings need
        {"\xF3\xA0\x81\x81", "<U+E0041>"},
        {"\xFF\xC3", "\xEF\xBF\xBD\xEF\xBF\xBD"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(visibleText(c.text), c.visible);
    EXPECT_EQ(visibleText(std::string_view("\0", 1)), "<U+0000>");
}
