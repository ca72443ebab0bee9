#include "report/Text.h"

#include <gtest/gtest.h>

using namespace report;
using Views = std::vector<std::string_view>;

TEST(Text, trimsAndLowers)
{
    EXPECT_EQ(trimmed(" \t a b \r\n"), "a b");
    EXPECT_EQ(trimmed(" \n"), "");
    EXPECT_EQ(lower("AbC\xC4 1"), "abc\xC4 1");
}

TEST(Text, splitsWithEmptyPieces)
{
    EXPECT_EQ(split("", ','), Views{});
    EXPECT_EQ(split("a", ','), Views{"a"});
    EXPECT_EQ(split("a,,b,", ','), (Views{"a", "", "b", ""}));
    EXPECT_EQ(split(",", ','), (Views{"", ""}));
    EXPECT_EQ(words("  a\tbc  d\n"), (Views{"a", "bc", "d"}));
    EXPECT_EQ(words(" "), Views{});
}

TEST(Text, takesLines)
{
    std::string_view text = "one\n\nthree";
    std::string_view line;
    Views lines;
    while (takeLine(text, line))
        lines.push_back(line);
    EXPECT_EQ(lines, (Views{"one", "", "three"}));
}

TEST(Text, readsKeysAndValues)
{
    EXPECT_EQ(keyValue("model name\t: a: b ", ':').key, "model name");
    EXPECT_EQ(keyValue("model name\t: a: b ", ':').value, "a: b");
    EXPECT_EQ(keyValue("alone", ':').key, "");
    EXPECT_EQ(keyValue("alone", ':').value, "alone");
}

TEST(Text, readsNumbersOnly)
{
    EXPECT_EQ(parseNumber("18446744073709551615"), UINT64_MAX);
    EXPECT_EQ(parseNumber("18446744073709551616"), std::nullopt);
    EXPECT_EQ(parseNumber<uint32_t>("4294967296"), std::nullopt);
    EXPECT_EQ(parseNumber("ff", 16), 255u);
    for (const char* text : {"", " 1", "1 ", "-1", "0x10", "1.5"})
        EXPECT_EQ(parseNumber(text), std::nullopt) << text;
    EXPECT_EQ(leadingNumber("16384 kB"), 16384u);
    EXPECT_EQ(leadingNumber("kB"), std::nullopt);
}
