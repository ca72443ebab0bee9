// The Scan Info group of whole scans.

#include <gtest/gtest.h>

#include "FakeMachine.h"

static constexpr char kGroup[] = "ScanInfo";

TEST(ScanInfo, tellsWhoScansAndWhen)
{
    FakeMachine machine;
    machine.conf("clock 1089896709").env("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows(kGroup).size(), 1u);
    EXPECT_EQ(result.value(kGroup, 0, "Manufacturer"), "Quorvane Systems Inc.");
    EXPECT_EQ(result.value(kGroup, 0, "MajorVersion"), "4");
    EXPECT_EQ(result.value(kGroup, 0, "MinorVersion"), "2");
    EXPECT_EQ(result.value(kGroup, 0, "ScanDate"), "2004-07-15-15.05.09.0000000");
    EXPECT_EQ(result.value(kGroup, 0, "Build"), "05/10/06 03:07:11");
}

TEST(ScanInfo, withoutLoginRecordsThereIsNoUptime)
{
    FakeMachine machine;
    EXPECT_EQ(machine.scan().rows(kGroup).at(0).values.size(), 5u);
}

TEST(ScanInfo, theUptimeCountsFromTheRunLevelRecord)
{
    FakeMachine machine;
    machine.conf("clock 1066737909").conf("login RUN_LVL 1066730000 line ~ id ~~ user runlevel");
    EXPECT_EQ(machine.scan().value(kGroup, 0, "Uptime"), "7909");
}

TEST(ScanInfo, aRecordOfTheFutureGivesANegativeUptime)
{
    FakeMachine machine;
    machine.conf("clock 1000000000").conf("login RUN_LVL 1000000010 line ~ id ~~ user runlevel");
    EXPECT_EQ(machine.scan().value(kGroup, 0, "Uptime"), "-10");
}
