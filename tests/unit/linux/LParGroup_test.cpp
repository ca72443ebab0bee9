#include "linux/LParGroup.h"

#include <gtest/gtest.h>
#include <string>

#include "com/VexDebug.h"
#include "tests/unit/LogCapture.h"
#include "tests/unit/linux/text/TextOf.h"

static CpuTopology topologyOf(std::string text)
{
    TextStream stream = textOf(text);
    return readCpuTopology(stream);
}

static constexpr char HYPER_THREADED[] = "processor\t: 0\nsiblings\t: 2\nflags\t\t: fpu ht\n"
                                         "processor\t: 1\nsiblings\t: 2\nflags\t\t: fpu ht\n";

TEST(Lpar, aHyperThreadedProcessorIsOne)
{
    EXPECT_EQ(nodeCapacity(2, topologyOf(HYPER_THREADED), 0), 1);
}

TEST(Lpar, withoutTheFlagTheLibrarysCountHolds)
{
    EXPECT_EQ(nodeCapacity(2, topologyOf("processor: 0\nprocessor: 1\nsiblings: 2\nflags: fpu\n"), CPU_FEATURE_HT), 2);
}

TEST(Lpar, theFirmwaresFeaturesStandInForAMissingFlagsLine)
{
    EXPECT_EQ(nodeCapacity(4, topologyOf("processor: 0\nprocessor: 1\nsiblings: 2\n"), CPU_FEATURE_HT), 1);
    EXPECT_EQ(nodeCapacity(4, topologyOf("processor: 0\nprocessor: 1\nsiblings: 2\n"), 0), 4);
}

TEST(Lpar, withoutAListThePackagesAreNotKnown)
{
    TextStream nothing(nullptr);
    EXPECT_EQ(nodeCapacity(3, readCpuTopology(nothing), CPU_FEATURE_HT), 3);
}

TEST(Lpar, theCapacityIsLoggedUnderTheGroupsBit)
{
    const CpuTopology cpu = topologyOf(HYPER_THREADED);
    EXPECT_EQ(logText(DEBUG_LPAR, VEX_LEVEL_DETAIL, [&] { nodeCapacity(2, cpu, 0); }),
              "\nHyperthreading detected: Physical CPU count=1\nnode capacity=1");
    EXPECT_EQ(logText(DEBUG_LPAR, VEX_LEVEL_DETAIL, [&] { nodeCapacity(2, topologyOf(""), 0); }), "");
}
