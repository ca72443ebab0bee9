// The computer at hand, scanned without the preload library, beside what other tools say about it. What a tool does not
// tell, and what changes while both look, is not compared.

#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "tests/scan/RealScan.h"

// One scan for all tests.
static const ScanResult& realScan()
{
    static const ScanResult result = scanThisComputer();
    return result;
}

// The value behind "KEY:" of one of lscpu's lines; empty when there is none.
static std::string lscpuValue(const std::string& output, const std::string& key)
{
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(key + ":", 0) != 0)
            continue;
        const size_t value = line.find_first_not_of(' ', key.size() + 1);
        return value == std::string::npos ? "" : line.substr(value);
    }
    return "";
}

static bool hasWord(const std::string& text, const std::string& word)
{
    return (' ' + text + ' ').find(' ' + word + ' ') != std::string::npos;
}

class RealProcessor : public testing::Test
{
protected:
    void SetUp() override
    {
        lscpu_ = outputOf("LC_ALL=C lscpu 2>/dev/null");
        if (lscpuValue(lscpu_, "Vendor ID").empty() ||
            readTextFile("/proc/cpuinfo").find("vendor_id") == std::string::npos)
            GTEST_SKIP() << "no lscpu, or a processor that /proc/cpuinfo describes in other words";
        ASSERT_FALSE(realScan().rows("Processor").empty());
    }

    std::string lscpu(const std::string& key) const { return lscpuValue(lscpu_, key); }
    static std::string scan(const std::string& name) { return realScan().value("Processor", 0, name); }

private:
    std::string lscpu_;
};

TEST_F(RealProcessor, isOfTheVendorFamilyModelAndSteppingThatLscpuTells)
{
    EXPECT_EQ(scan("Manufacturer"), lscpu("Vendor ID"));
    EXPECT_EQ(scan("ChipFamily"), lscpu("CPU family"));
    EXPECT_EQ(scan("ChipModel"), lscpu("Model"));
    EXPECT_EQ(scan("ChipStepping"), lscpu("Stepping"));
}

TEST_F(RealProcessor, hasTheFeaturesThatLscpuLists)
{
    // A name that is found in another one, or behind the end of the scan's line buffer, is not comparable.
    static constexpr struct {
        const char* attribute;
        const char* flag;
    } FEATURES[] = {
        {"FloatingPointUnitPresent", "fpu"},      {"TimeStampCounter", "tsc"},
        {"PhysicalAddressExtensions", "pae"},     {"CMPXCHG8BInstructionSupport", "cx8"},
        {"FastFloatingPointSaveRestore", "fxsr"},
    };
    for (const auto& feature : FEATURES)
        EXPECT_EQ(scan(feature.attribute), hasWord(lscpu("Flags"), feature.flag) ? "Y" : "N") << feature.flag;
}

TEST_F(RealProcessor, isThereAsOftenAsLscpuCountsSockets)
{
    const size_t rows = realScan().rows("Processor").size();
    if (realScan().has("Processor", 0, "CPUEnabled"))
        EXPECT_EQ(std::to_string(rows), lscpu("Socket(s)"));
    else
        EXPECT_LE(rows, strtoul(lscpu("CPU(s)").c_str(), nullptr, 10));
}

TEST(RealMemory, isAsLargeAsFreeTells)
{
    constexpr double FREE_MAY_CHANGE = 0.25; // of the whole, between two looks
    std::istringstream output(outputOf("LC_ALL=C free -k 2>/dev/null"));
    std::string line;
    std::string label;
    std::string total;
    std::string used;
    std::string free;
    bool compared = false;
    while (std::getline(output, line)) {
        if (!(std::istringstream(line) >> label >> total >> used >> free))
            continue;
        if (label == "Mem:") {
            EXPECT_EQ(realScan().value("Memory", 0, "TotalPhysical"), total);
            EXPECT_NEAR(std::stod(realScan().value("Memory", 0, "FreePhysical")), std::stod(free),
                        FREE_MAY_CHANGE * std::stod(total));
            compared = true;
        } else if (label == "Swap:") {
            EXPECT_EQ(realScan().value("Memory", 0, "TotalVirtual"), total);
        }
    }
    if (!compared)
        GTEST_SKIP() << "no free";
}

TEST(RealHost, hasTheNameThatUnameTells)
{
    if (realScan().rows("UNIXSystemParams").empty())
        GTEST_SKIP() << "no run-level record";
    std::string name = outputOf("uname -n");
    name.erase(name.find_last_not_of('\n') + 1);
    EXPECT_EQ(realScan().value("UNIXSystemParams", 0, "Hostname"), name);
}
