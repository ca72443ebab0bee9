// The Regional group of whole scans.

#include <gtest/gtest.h>

#include "FakeMachine.h"

static constexpr char kGroup[] = "Regional";

static ScanResult scanIn(const std::string& zone)
{
    FakeMachine machine;
    machine.env("TZ", zone);
    return machine.scan();
}

static void expectZone(const ScanResult& result, const char* seconds, const char* sign, const char* hasDaylight,
                       const char* name, const char* daylightName)
{
    ASSERT_EQ(result.rows(kGroup).size(), 1u);
    EXPECT_EQ(result.value(kGroup, 0, "TimeZoneSeconds"), seconds);
    EXPECT_EQ(result.value(kGroup, 0, "TimeZonePlusMinus"), sign);
    EXPECT_EQ(result.value(kGroup, 0, "Daylight"), hasDaylight);
    EXPECT_EQ(result.value(kGroup, 0, "TimeZoneName"), name);
    EXPECT_EQ(result.value(kGroup, 0, "TimeZoneDaylightName"), daylightName);
}

TEST(Regional, oneHourEastOfUtcWithSummerTime)
{
    const ScanResult result = scanIn("CET-1CEST,M3.5.0,M10.5.0/3");
    expectZone(result, "3600", "+", "T", "CET", "CEST");
    EXPECT_TRUE(result.logHas("\nTimezone seconds=3600\nTimezone plus/minus=+\nTimezone daylight=1"
                              "\nTimezone tzname=CET\nTimezone tzname daylight=CEST\nEnd Group Regional"));
}

TEST(Regional, fiveHoursWestOfUtc)
{
    const ScanResult result = scanIn("EST5");
    expectZone(result, "18000", "-", "F", "EST", "EST");
    EXPECT_TRUE(result.logHas("\nTimezone seconds=18000\nTimezone plus/minus=-\nTimezone daylight=0"));
}

TEST(Regional, aSecondWestOfUtcIsWest)
{
    expectZone(scanIn("NEAR0:00:01"), "1", "-", "F", "NEAR", "NEAR");
}

TEST(Regional, utcCountsAsEast)
{
    expectZone(scanIn("UTC0"), "0", "+", "F", "UTC", "UTC");
}

TEST(Regional, theLocaleIsTheEnvironments)
{
    FakeMachine machine;
    EXPECT_EQ(machine.scan().value(kGroup, 0, "Local"), "C");
    machine.env("LC_CTYPE", "C.UTF-8");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value(kGroup, 0, "Local"), "C.UTF-8");
    EXPECT_TRUE(result.logHas("\nLC_CTYPE locale=C.UTF-8"));
}

TEST(Regional, aLocaleThatIsNotInstalledGivesAnEmptyText)
{
    FakeMachine machine;
    machine.env("LC_ALL", "xx_YY.nowhere");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value(kGroup, 0, "Local"), "");
    EXPECT_TRUE(result.logHas("\nsetlocale returned NULL\nLC_CTYPE locale=\n"));
}
