#include "host/packages/ControlText.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace host;

namespace
{
constexpr std::string_view kNames[] = {"Package", "Status"};

// Paragraphs as "value|value".
std::vector<std::string> paragraphs(std::string_view text)
{
    std::vector<std::string> shown;
    readControlText(text, kNames,
                    [&](Values values) { shown.push_back(std::string(values[0]) + "|" + std::string(values[1])); });
    return shown;
}
} // namespace

TEST(ControlText, isReadParagraphByParagraph)
{
    const struct {
        std::string_view text;
        std::vector<std::string> shown;
    } cases[] = {
        {"", {}},
        {"\n\n", {}},
        {"Package: a\nStatus: s\n\nPackage: b\n", {"a|s", "b|"}},
        {"\n\nPackage: a\n\n\n\nPackage: b", {"a|", "b|"}},
        {"Package: a\n \t\nStatus: s\n", {"a|", "|s"}}, // a line of blanks ends a paragraph
        {"package:a\nSTATUS:\t s \r\n", {"a|s"}},
        {"Package: a\nDescription: x\n Status: no field\n\tPackage: nor this\n", {"a|"}},
        {"Package: a\nPackage: b\n", {"b|"}},
        {"Packages: a\nPackag: b\n: c\nStatus\n", {"|"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(paragraphs(c.text), c.shown) << c.text;
}

TEST(ControlText, takesBytesAsTheyAre)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(paragraphs("Package: a\0b\nStatus: \xFF\n"sv), std::vector<std::string>{std::string("a\0b|\xFF", 5)});
}
