#include "linux/processor/CpuInfo.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/unit/linux/text/TextOf.h"

static CpuInfo cpuOf(std::string text)
{
    TextStream stream = textOf(text);
    return readCpuInfo(stream);
}

static CpuTopology topologyOf(std::string text)
{
    TextStream stream = textOf(text);
    return readCpuTopology(stream);
}

static std::string valueOf(const char* line, const char* before = "before")
{
    char out[kCpuInfoLineSize];
    snprintf(out, sizeof out, "%s", before);
    parseLine(line, out);
    return out;
}

static constexpr char PENTIUM_III[] = "processor\t: 0\n"
                                      "vendor_id\t: GenuineIntel\n"
                                      "cpu family\t: 6\n"
                                      "model\t\t: 8\n"
                                      "model name\t: Pentium III (Coppermine)\n"
                                      "stepping\t: 10\n"
                                      "cpu MHz\t\t: 996.766\n"
                                      "siblings\t: 2\n"
                                      "flags\t\t: fpu vme de\n"
                                      "bogomips\t: 1985.74\n\n";

TEST(CpuInfo, takesTheTextTwoCharactersBehindTheColon)
{
    EXPECT_EQ(valueOf("cpu MHz\t\t: 996.766"), "996.766");
    EXPECT_EQ(valueOf("a:bc"), "c");
    EXPECT_EQ(valueOf("a: b: c"), "b: c");
    EXPECT_EQ(valueOf(": x"), "x");
}

TEST(CpuInfo, aColonAmongTheLastTwoCharactersGivesTheEmptyText)
{
    EXPECT_EQ(valueOf("flags:"), "");
    EXPECT_EQ(valueOf("flags: "), "");
    EXPECT_EQ(valueOf("flags::"), "");
    EXPECT_EQ(valueOf(":"), "");
}

TEST(CpuInfo, aLineWithoutColonLeavesTheTextAsItWas)
{
    EXPECT_EQ(valueOf("flags"), "before");
    EXPECT_EQ(valueOf(""), "before");
}

TEST(CpuInfo, aTextLongerThanTheBufferIsCut)
{
    const std::string line = "k: " + std::string(1000, 'x');
    EXPECT_EQ(valueOf(line.c_str()), std::string(kCpuInfoLineSize - 1, 'x'));
}

TEST(CpuInfo, readsOneProcessor)
{
    const CpuInfo cpu = cpuOf(PENTIUM_III);
    EXPECT_EQ(cpu.processorLines, 1);
    EXPECT_STREQ(cpu.vendor, "GenuineIntel");
    EXPECT_EQ(cpu.family, 6);
    EXPECT_EQ(cpu.model, 8);
    EXPECT_STREQ(cpu.modelName, "Pentium III (Coppermine)");
    EXPECT_EQ(cpu.stepping, 10);
    EXPECT_STREQ(cpu.mhz, "996.766");
    EXPECT_EQ(cpu.logicalProcessors, 2);
    EXPECT_STREQ(cpu.flags.get(), "fpu vme de");
}

TEST(CpuInfo, theFirstBlockDescribesAllProcessors)
{
    const CpuInfo cpu = cpuOf(std::string(PENTIUM_III) + "processor\t: 1\nvendor_id\t: AuthenticAMD\ncpu family\t: 15\n"
                                                         "model\t\t: 5\nmodel name\t: Opteron\nstepping\t: 1\n"
                                                         "cpu MHz\t\t: 1.0\nsiblings\t: 4\nflags\t\t: sse\n");
    EXPECT_EQ(cpu.processorLines, 2);
    EXPECT_STREQ(cpu.vendor, "GenuineIntel");
    EXPECT_EQ(cpu.family, 6);
    EXPECT_EQ(cpu.model, 8);
    EXPECT_STREQ(cpu.modelName, "Pentium III (Coppermine)");
    EXPECT_EQ(cpu.stepping, 10);
    EXPECT_STREQ(cpu.mhz, "996.766");
    EXPECT_EQ(cpu.logicalProcessors, 2);
    EXPECT_STREQ(cpu.flags.get(), "fpu vme de");
}

TEST(CpuInfo, aValueOf0IsLookedForAgainInLaterBlocks)
{
    const CpuInfo cpu =
        cpuOf("model\t: 0\nstepping\t: 0\ncpu family\t: 0\nmodel\t: 3\nstepping\t: 4\ncpu family\t: 5\n");
    EXPECT_EQ(cpu.model, 3);
    EXPECT_EQ(cpu.stepping, 4);
    EXPECT_EQ(cpu.family, 5);
}

TEST(CpuInfo, aSecondModelNameLineIsTriedAsModel)
{
    EXPECT_EQ(cpuOf("model name\t: Pentium\nmodel name\t: 86C486\n").model, 86);
    EXPECT_EQ(cpuOf("model\t: 2\nmodel name\t: Pentium\nmodel name\t: 86C486\n").model, 2);
}

TEST(CpuInfo, aSecondSiblingsLineIsNoOtherLine)
{
    const CpuInfo cpu = cpuOf("siblings\t: 2\nsiblings\t: 4\n");
    EXPECT_EQ(cpu.logicalProcessors, 2);
    EXPECT_EQ(cpuOf("siblings\t: 1\nsiblings\t: 4\n").logicalProcessors, 4);
    EXPECT_EQ(cpuOf("siblings\t: 0\nsiblings\t: 4\n").logicalProcessors, 0);
}

TEST(CpuInfo, keysAreSubstringsButProcessorBeginsItsLine)
{
    EXPECT_EQ(cpuOf(" processor : 0\n").processorLines, 0);
    EXPECT_EQ(cpuOf("processors: 4\n").processorLines, 1);
    EXPECT_EQ(cpuOf("Processor: 4\n").processorLines, 0);
    EXPECT_STREQ(cpuOf("the vendor_id is: me\n").vendor, "me");
}

TEST(CpuInfo, aNumberLineWithoutColonRepeatsTheLastNumber)
{
    const CpuInfo cpu = cpuOf("cpu family\t: 6\nmodel\nstepping\n");
    EXPECT_EQ(cpu.model, 6);
    EXPECT_EQ(cpu.stepping, 6);
    EXPECT_EQ(cpuOf("model\n").model, 0) << "the shared text starts empty";
}

TEST(CpuInfo, numbersSaturateAt32BitsAndMayBeNegative)
{
    const CpuInfo cpu = cpuOf("cpu family: 99999999999\nmodel: -99999999999\nstepping: 12abc\n");
    EXPECT_EQ(cpu.family, INT32_MAX);
    EXPECT_EQ(cpu.model, INT32_MIN);
    EXPECT_EQ(cpu.stepping, 12);
}

TEST(CpuInfo, anEmptyFlagsLineIsHeld)
{
    const CpuInfo cpu = cpuOf("flags:\nflags: fpu\n");
    ASSERT_NE(cpu.flags, nullptr);
    EXPECT_STREQ(cpu.flags.get(), "");
    EXPECT_EQ(cpuOf("bogomips: 1\n").flags, nullptr);
}

TEST(CpuInfo, aLineOf256CharactersComesInPieces)
{
    std::string line = "flags: ";
    line += std::string(255 - line.size(), 'f');
    const CpuInfo cpu = cpuOf(line + "processor\n" + "flags: second\n");
    EXPECT_EQ(cpu.processorLines, 1) << "the second piece is a line of its own";
    EXPECT_STREQ(cpu.flags.get(), line.c_str() + 7);
}

TEST(CpuInfo, theLastControlCharacterIsDropped)
{
    EXPECT_STREQ(cpuOf("vendor_id: a\r\n").vendor, "a\r") << "one only";
    EXPECT_STREQ(cpuOf("vendor_id: a").vendor, "a");
    EXPECT_STREQ(cpuOf("vendor_id: a\t").vendor, "a");
}

TEST(CpuInfo, aMissingFileLeavesTheInitialValues)
{
    TextStream nothing(nullptr);
    const CpuInfo cpu = readCpuInfo(nothing);
    EXPECT_EQ(cpu.processorLines, 0);
    EXPECT_EQ(cpu.logicalProcessors, 1);
    EXPECT_STREQ(cpu.vendor, "");
    EXPECT_STREQ(cpu.modelName, "");
    EXPECT_STREQ(cpu.mhz, "");
    EXPECT_EQ(cpu.family | cpu.model | cpu.stepping, 0);
    EXPECT_EQ(cpu.flags, nullptr);
}

TEST(CpuInfo, theTopologyIsReadByItself)
{
    const CpuTopology cpu = topologyOf(std::string(PENTIUM_III) + PENTIUM_III);
    EXPECT_EQ(cpu.processorLines, 2);
    EXPECT_EQ(cpu.logicalProcessors, 2);
    EXPECT_STREQ(cpu.flags.get(), "fpu vme de");
    EXPECT_STREQ(topologyOf("model name: x flags: y\n").flags.get(), "x flags: y") << "no other key takes a line";
}

TEST(CpuInfo, packagesOfSeveralLogicalProcessorsNeedTheFlagAndTheCount)
{
    const CpuTopology one = topologyOf("siblings: 1\n");
    const CpuTopology two = topologyOf("processor: 0\nprocessor: 1\nprocessor: 2\nsiblings: 2\n");
    EXPECT_FALSE(one.hyperThreaded(CPU_FEATURE_HT));
    EXPECT_TRUE(two.hyperThreaded(CPU_FEATURE_HT));
    EXPECT_FALSE(two.hyperThreaded(~CPU_FEATURE_HT));
    EXPECT_FALSE(topologyOf("siblings: -2\n").hyperThreaded(CPU_FEATURE_HT));
    EXPECT_EQ(two.packages(), 1);
}

TEST(CpuFlags, eachNameHasItsBit)
{
    static constexpr struct {
        const char* name;
        unsigned long mask;
    } FLAGS[] = {
        {"fpu", 0x1},       {"vme", 0x2},       {"de", 0x4},         {"pse", 0x8},       {"tsc", 0x10},
        {"msr", 0x20},      {"pae", 0x40},      {"mce", 0x80},       {"cx8", 0x100},     {"apic", 0x200},
        {"sep", 0x800},     {"mtrr", 0x1000},   {"pge", 0x2000},     {"mca", 0x4000},    {"cmov", 0x8000},
        {"pat", 0x10000},   {"pse36", 0x20008}, {"psn", 0x40000},    {"mmx", 0x800000},  {"fxsr", 0x1000000},
        {"sse", 0x2000000}, {"xmm", 0x2000000}, {"sse2", 0x6000000}, {"ht", 0x10000000},
    };
    for (const auto& flag : FLAGS)
        EXPECT_EQ(makeCPUflagsFromString(flag.name), flag.mask) << flag.name;
}

TEST(CpuFlags, namesAreFoundInsideLongerOnes)
{
    EXPECT_EQ(makeCPUflagsFromString("sse2"), 0x6000000u);
    EXPECT_EQ(makeCPUflagsFromString("model weight"), 0x10000004u) << "de and ht";
    EXPECT_EQ(makeCPUflagsFromString("FPU VME"), 0u) << "case counts";
}

TEST(CpuFlags, noLineHasNoFlags)
{
    EXPECT_EQ(makeCPUflagsFromString(""), 0u);
    EXPECT_EQ(makeCPUflagsFromString(nullptr), 0u);
}
