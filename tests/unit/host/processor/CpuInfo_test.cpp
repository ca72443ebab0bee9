#include "host/processor/CpuInfo.h"

#include <gtest/gtest.h>

using namespace host;

namespace
{
struct Seen {
    uint32_t number;
    std::map<std::string, std::string> lines;
    bool operator==(const Seen&) const = default;
};

std::vector<Seen> seenIn(std::string_view text)
{
    std::vector<Seen> seen;
    forEachProcessor(text, [&](uint32_t number, const CpuInfo& lines) {
        seen.push_back({number, {lines.begin(), lines.end()}});
    });
    return seen;
}
} // namespace

TEST(CpuInfo, ofX86HasABlockAProcessor)
{
    const std::vector<Seen> seen = seenIn("processor\t: 0\nvendor_id\t: GenuineIntel\nmodel name\t: CPU @ 2.0GHz\n"
                                          "power management:\n\n"
                                          "processor\t: 7\nvendor_id\t: GenuineIntel\nflags\t\t: fpu: vme\n\n");
    EXPECT_EQ(seen, (std::vector<Seen>{
                        {0, {{"processor", "0"}, {"vendor_id", "GenuineIntel"}, {"model name", "CPU @ 2.0GHz"}}},
                        {7, {{"processor", "7"}, {"vendor_id", "GenuineIntel"}, {"flags", "fpu: vme"}}}}));
}

TEST(CpuInfo, ofArmMayBeginWithAHeadingAndEndsWithTheBoard)
{
    const std::vector<Seen> seen = seenIn("Processor\t: ARMv7 rev 4\nprocessor\t: 0\nBogoMIPS\t: 38.40\n\n"
                                          "processor\t: 1\nBogoMIPS\t: 38.41\n\n"
                                          "CPU implementer\t: 0x41\nHardware\t: BCM2709\n");
    EXPECT_EQ(
        seen,
        (std::vector<Seen>{
            {0, {{"Processor", "ARMv7 rev 4"}, {"processor", "0"}, {"BogoMIPS", "38.40"}}},
            {1, {{"processor", "1"}, {"BogoMIPS", "38.41"}, {"CPU implementer", "0x41"}, {"Hardware", "BCM2709"}}}}));
}

TEST(CpuInfo, ofPowerNamesThePlatformBehindTheLastProcessor)
{
    const std::vector<Seen> seen = seenIn("processor\t: 0\ncpu\t\t: POWER8E (raw), altivec supported\n"
                                          "clock\t\t: 3690.000000MHz\n\nprocessor\t: 8\ncpu\t\t: POWER8E\n\n"
                                          "timebase\t: 512000000\nplatform\t: PowerNV\n");
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].lines.at("cpu"), "POWER8E (raw), altivec supported");
    EXPECT_EQ(seen[0].lines.count("platform"), 0u);
    EXPECT_EQ(seen[1].number, 8u);
    EXPECT_EQ(seen[1].lines.at("platform"), "PowerNV");
}

// Its processors are numbered in the key.
TEST(CpuInfo, ofS390ComesAsOneBlock)
{
    const std::vector<Seen> seen = seenIn("vendor_id       : IBM/S390\n# processors    : 2\nbogomips per cpu: 3033.00\n"
                                          "processor 0: version = FF,  identification = 2D1B37,  machine = 2964\n"
                                          "processor 1: version = FF,  identification = 2D1B38,  machine = 2964\n\n"
                                          "cpu number      : 0\ncpu number      : 1\n");
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].number, 0u);
    EXPECT_EQ(seen[0].lines.at("vendor_id"), "IBM/S390");
    EXPECT_EQ(seen[0].lines.at("processor 1"), "version = FF,  identification = 2D1B38,  machine = 2964");
    EXPECT_EQ(seen[0].lines.at("cpu number"), "0") << "the first of several lines counts";
}

TEST(CpuInfo, takesOddTextsAsTheyAre)
{
    EXPECT_TRUE(seenIn("").empty());
    EXPECT_TRUE(seenIn("\n\n:\n: x\nkey:\nno colon\n").empty());
    EXPECT_EQ(seenIn("processor: 4294967296\nx: y").size(), 1u) << "no number of a processor, a line all the same";
    EXPECT_EQ(seenIn("processor: -1")[0].number, 0u);
    EXPECT_EQ(seenIn("processor: 1\nprocessor: 1\n").size(), 2u);
}

TEST(FeatureBits, areThoseOfTheNamedFlags)
{
    EXPECT_EQ(featureBits(""), std::nullopt);
    EXPECT_EQ(featureBits("half fast"), 0u);
    EXPECT_EQ(featureBits("fpu"), 1u);
    EXPECT_EQ(featureBits("fpu fpu\tpbe sse4_2"), 0x80000001u);
    EXPECT_EQ(featureBits("fpu vme de pse tsc msr pae mce cx8 apic sep mtrr pge mca cmov pat pse36 clflush mmx fxsr "
                          "sse sse2 ht syscall nx"),
              0x178BFBFFu);
}

TEST(ImplementerName, knowsNumbersInHexadecimal)
{
    EXPECT_STREQ(implementerName("0x41"), "ARM");
    EXPECT_STREQ(implementerName("0xc0"), "Ampere");
    for (const char* number : {"", "41", "0x", "0x00", "0xff", "0x41 ", "0x100000041"})
        EXPECT_EQ(implementerName(number), nullptr) << number;
}
