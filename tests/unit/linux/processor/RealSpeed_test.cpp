#include "linux/processor/RealSpeed.h"

#include <cstdint>
#include <gtest/gtest.h>

// The rule said once more, as rows that are searched: a last part of 0 to 99 from first to last means so much beyond
// the hundreds.
struct SpeedRule {
    uint32_t first;
    uint32_t last;
    uint32_t nominal;
};
static constexpr SpeedRule RULES[] = {
    {0, 9, 0},    {10, 15, 0},  {16, 19, 20}, {20, 29, 20}, {30, 39, 33},  {40, 49, 50},
    {50, 57, 50}, {58, 59, 60}, {60, 62, 60}, {63, 69, 66}, {70, 70, 66},  {71, 77, 75},
    {78, 79, 80}, {80, 85, 80}, {86, 89, 90}, {90, 91, 90}, {92, 99, 100},
};

static uint32_t expectedSpeed(uint32_t mhz)
{
    if (mhz > 70 && mhz < 80)
        return 75;
    if (mhz > 185 && mhz < 190)
        return 188;
    for (const SpeedRule& rule : RULES) {
        if (mhz % 100 >= rule.first && mhz % 100 <= rule.last)
            return mhz / 100 * 100 + rule.nominal;
    }
    ADD_FAILURE() << "no rule for " << mhz;
    return 0;
}

TEST(RealSpeed, everyValueUpTo10000FollowsTheRules)
{
    for (uint32_t mhz = 0; mhz <= 10000; ++mhz)
        ASSERT_EQ(RealSpeedValue(mhz), expectedSpeed(mhz)) << mhz;
}

TEST(RealSpeed, measuredClocksBecomeNominalOnes)
{
    EXPECT_EQ(RealSpeedValue(2793), 2800u);
    EXPECT_EQ(RealSpeedValue(1266), 1266u);
    EXPECT_EQ(RealSpeedValue(1270), 1266u);
    EXPECT_EQ(RealSpeedValue(999), 1000u);
    EXPECT_EQ(RealSpeedValue(1398), 1400u);
    EXPECT_EQ(RealSpeedValue(547), 550u);
    EXPECT_EQ(RealSpeedValue(0), 0u);
}

TEST(RealSpeed, theSpecialClocksEndWhereTheOrdinaryRulesBegin)
{
    EXPECT_EQ(RealSpeedValue(70), 66u);
    EXPECT_EQ(RealSpeedValue(71), 75u);
    EXPECT_EQ(RealSpeedValue(78), 75u);
    EXPECT_EQ(RealSpeedValue(79), 75u);
    EXPECT_EQ(RealSpeedValue(80), 80u);
    EXPECT_EQ(RealSpeedValue(178), 180u);
    EXPECT_EQ(RealSpeedValue(185), 180u);
    EXPECT_EQ(RealSpeedValue(186), 188u);
    EXPECT_EQ(RealSpeedValue(189), 188u);
    EXPECT_EQ(RealSpeedValue(190), 190u);
    EXPECT_EQ(RealSpeedValue(286), 290u);
}

TEST(RealSpeed, countsIn32BitsOnEveryBuild)
{
    EXPECT_EQ(RealSpeedValue(2147483647), 2147483650u);
    EXPECT_EQ(RealSpeedValue(4294967295), 4u);
    EXPECT_EQ(RealSpeedValue(static_cast<unsigned long>(-5L)), 4294967290u);
}
