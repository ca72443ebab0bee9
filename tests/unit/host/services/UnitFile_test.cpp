#include "host/services/UnitFile.h"

#include <gtest/gtest.h>

#include "host/services/InitScripts.h"

using namespace host;

namespace
{
UnitFile parsed(std::string_view text)
{
    UnitFile unit;
    parseUnitFile(text, unit);
    return unit;
}
} // namespace

TEST(UnitFile, assignmentsCountInTheirSections)
{
    const UnitFile unit =
        parsed("Description=none\n[Unit]\nDescription = first\nDescription=last\nType=no\n"
               "; comment\n[Service]\nType=forking\nUser=a\nDescription=no\n[Install]\nAlso=b.service\n");
    EXPECT_EQ(unit.description, "last");
    EXPECT_EQ(unit.effectiveType(), "forking");
    EXPECT_EQ(unit.user, "a");
    EXPECT_TRUE(unit.hasOthers);
    EXPECT_FALSE(unit.isWanted);
}

TEST(UnitFile, linesGoOn)
{
    EXPECT_EQ(parsed("[Unit]\nDescription=a \\\n# between\n  b\\\n").description, "a  b");
    EXPECT_EQ(parsed("[Unit]\nDescription=a\\").description, "a");
}

TEST(UnitFile, theFirstCommandCounts)
{
    const struct {
        std::string_view lines, command;
    } cases[] = {
        {"ExecStart=/a b\nExecStart=/c\n", "/a b"},
        {"ExecStart=/a\nExecStart=\nExecStart=/c\n", "/c"},
        {"ExecStart=-+!!/a b\n", "/a b"},
        {"ExecStart=@/a name b c\n", "/a b c"},
        {"ExecStart=-@/a name\n", "/a"},
        {"ExecStart=@/a\n", "/a"},
        {"ExecStart=@\n", ""},
        {"ExecStart=\n", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parsed("[Service]\n" + std::string(c.lines)).execStart, c.command) << c.lines;
}

TEST(UnitFile, hasATypeWithoutSayingIt)
{
    EXPECT_EQ(parsed("[Service]\nExecStart=/a\n").effectiveType(), "simple");
    EXPECT_EQ(parsed("[Service]\nExecStart=/a\nBusName=x\n").effectiveType(), "dbus");
    EXPECT_EQ(parsed("[Service]\n").effectiveType(), "oneshot");
}

TEST(UnitFile, aHugeLineIsCut)
{
    const std::string line(100'000, 'x');
    std::string text = "[Unit]\nDescription=";
    for (int i = 0; i < 20; ++i)
        text += line + "\\\n";
    EXPECT_LE(parsed(text).description.size(), 200'000U);
}

TEST(InitScript, saysWhetherItIsAService)
{
    EXPECT_FALSE(parseInitScript("#!/bin/sh\necho Provides: x\n").isService);
    EXPECT_TRUE(parseInitScript("#!/bin/sh\n# Provides:  x\n").isService);
    EXPECT_TRUE(parseInitScript("#\n# chkconfig: - 5 5\n").isService);
    const InitScript script = parseInitScript("#!/sbin/openrc-run\ndescription=\"Serves pages\"\ncommand=/x\n");
    EXPECT_TRUE(script.isService);
    EXPECT_EQ(script.description, "Serves pages");
}
