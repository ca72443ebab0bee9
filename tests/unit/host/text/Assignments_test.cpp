#include "host/text/Assignments.h"

#include <gtest/gtest.h>

using namespace host;

TEST(Assignments, areReadAsShellsReadThem)
{
    static const struct {
        const char *text, *name, *value;
    } cases[] = {
        {"NAME=x\n", "NAME", "x"},
        {"NAME=x", "NAME", "x"},
        {"  NAME = x \r\n", "NAME", "x"},
        {"NAME=\"Debian GNU/Linux 12\"\n", "NAME", "Debian GNU/Linux 12"},
        {"NAME='single \\ \"quoted\"'", "NAME", "single \\ \"quoted\""},
        {"NAME=\"a \\\"b\\\" \\$c \\\\\"", "NAME", "a \"b\" $c \\"},
        {"NAME=\"\"", "NAME", ""},
        {"NAME=", "NAME", ""},
        {"NAME=\"", "NAME", "\""},
        {"NAME=\"open", "NAME", "\"open"},
        {"NAME='a\"", "NAME", "'a\""},
        {"NAME=\"abc\\\"", "NAME", "abc\\"},
        {"NAME=a=b=c", "NAME", "a=b=c"},
        {"NAME=first\nNAME=last\n", "NAME", "last"},
    };
    for (const auto& c : cases) {
        const auto values = parseAssignments(c.text);
        ASSERT_EQ(values.size(), 1u) << c.text;
        EXPECT_EQ(values.begin()->first, c.name) << c.text;
        EXPECT_EQ(values.begin()->second, c.value) << c.text;
    }
}

TEST(Assignments, areNoneInOtherLines)
{
    for (const char* text : {"", "\n\n", "# NAME=x\n", "  # NAME=x", "#NAME=x", "=x\n", "NAME\n", "no name"})
        EXPECT_TRUE(parseAssignments(text).empty()) << text;
}
