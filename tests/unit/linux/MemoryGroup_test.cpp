#include "linux/MemoryGroup.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "com/VexDebug.h"
#include "tests/unit/LogCapture.h"
#include "tests/unit/TableText.h"
#include "tests/unit/linux/text/TextOf.h"

static bool readText(std::string text, MemoryAmounts* amounts)
{
    TextStream stream = textOf(text);
    return readMeminfo(stream, amounts);
}

// "total free swapTotal swapFree", or "sysinfo" when the text does not tell.
static std::string amountsOf(const std::string& text)
{
    MemoryAmounts amounts;
    if (!readText(text, &amounts))
        return "sysinfo";
    return std::to_string(amounts.total) + ' ' + std::to_string(amounts.free) + ' ' +
           std::to_string(amounts.swapTotal) + ' ' + std::to_string(amounts.swapFree);
}

static int32_t valueOf(std::string line)
{
    return parseVal(line.data());
}

static std::string rowOf(const MemoryAmounts& amounts, const MemorySlots& slots = {}, uint32_t pageSize = 4096)
{
    const std::unique_ptr<VexTableRow> row(newMemoryRow(amounts, pageSize, slots));
    return rowText(*row);
}

TEST(Meminfo, theFourLabelledLinesAreRead)
{
    EXPECT_EQ(
        amountsOf("MemTotal:       515840 kB\nMemFree:          7980 kB\nBuffers: 1 kB\nSwapTotal:     1052248 kB\n"
                  "SwapFree:      1050000 kB\n"),
        "515840 7980 1052248 1050000");
}

TEST(Meminfo, theOldSummaryLinesAreSkipped)
{
    EXPECT_EQ(
        amountsOf("        total:    used:    free:  shared: buffers:  cached:\n"
                  "Mem:  64380928 61038592  3342336 38064128  2531328 24162304\n"
                  "Swap: 73990144  1077248 72912896\n"
                  "MemTotal:     62872 kB\nMemFree:       3264 kB\nSwapTotal:    72256 kB\nSwapFree:     71204 kB\n"),
        "62872 3264 72256 71204");
}

TEST(Meminfo, aMissingLineLeavesItsAmountAt0)
{
    EXPECT_EQ(amountsOf("MemTotal: 10 kB\nSwapFree: 4 kB\n"), "10 0 0 4");
    EXPECT_EQ(amountsOf("MemFree: 10 kB\n"), "0 10 0 0") << "no total, no fallback either";
    EXPECT_EQ(amountsOf("\n"), "0 0 0 0");
}

TEST(Meminfo, aTotalOf0IsNoNews)
{
    EXPECT_EQ(amountsOf("MemTotal: 0 kB\nMemFree: 5 kB\n"), "sysinfo");
    EXPECT_EQ(amountsOf("MemTotal: many kB\n"), "sysinfo");
    EXPECT_EQ(amountsOf("MemTotal: \n"), "sysinfo");
}

TEST(Meminfo, theSameTotalTwiceIsNoNews)
{
    EXPECT_EQ(amountsOf("MemTotal: 5 kB\nMemTotal: 5 kB\n"), "sysinfo");
    EXPECT_EQ(amountsOf("MemTotal: 5 kB\nMemTotal: 6 kB\n"), "6 0 0 0");
}

TEST(Meminfo, aMissingOrEmptyFileIsNoSource)
{
    MemoryAmounts amounts;
    TextStream nothing(nullptr);
    EXPECT_FALSE(readMeminfo(nothing, &amounts));
    TextStream empty = TextStream::openFile("/dev/null");
    EXPECT_FALSE(readMeminfo(empty, &amounts));
}

TEST(Meminfo, aLabelNeedsItsBlank)
{
    EXPECT_EQ(amountsOf("MemTotal: 1 kB\nMemFree:\t5 kB\nSwapTotal:7 kB\n"), "1 0 0 0");
    EXPECT_EQ(amountsOf("MemTotal: 1 kB\nMemFree: \t5 kB\n"), "1 5 0 0");
    EXPECT_EQ(amountsOf("MemTotal: 1 kB\nswapfree: 5 kB\n"), "1 0 0 0") << "case counts";
}

TEST(Meminfo, aLabelIsFoundAnywhereButTheNumberIsTheSecondWord)
{
    EXPECT_EQ(amountsOf("HugeMemTotal: 8 kB\n"), "8 0 0 0");
    EXPECT_EQ(amountsOf("a 9 MemTotal: 8 kB\n"), "9 0 0 0");
}

TEST(Meminfo, numbersSaturateAt32Bits)
{
    EXPECT_EQ(amountsOf("MemTotal: 99999999999 kB\nMemFree: -1 kB\n"), "2147483647 4294967295 0 0");
}

TEST(Meminfo, aLineLongerThanTheBufferComesInPieces)
{
    EXPECT_EQ(amountsOf("MemTotal: 3 kB\n" + std::string(255, 'x') + "MemFree: 4 kB\n"), "3 4 0 0");
    EXPECT_EQ(amountsOf("MemTotal: 3 kB\n" + std::string(250, 'x') + "MemFree: 4 kB\n"), "3 0 0 0");
}

TEST(Meminfo, aValueIsTheWordBehindTheLabel)
{
    EXPECT_EQ(valueOf("MemTotal:       515840 kB\n"), 515840);
    EXPECT_EQ(valueOf("MemTotal: \t:515840\n"), 515840);
    EXPECT_EQ(valueOf("MemTotal: 12x\n"), 12);
    EXPECT_EQ(valueOf("MemTotal:\n"), 0);
    EXPECT_EQ(valueOf("MemTotal:\t5\n"), 0) << "one word";
    EXPECT_EQ(valueOf(" \n"), 0);
    EXPECT_EQ(valueOf(""), 0);
}

TEST(MemoryRow, pagesAreKilobytesDividedByBytes)
{
    EXPECT_EQ(rowOf({2097152, 1048576, 5, 4}), "1=2097152|2=1048576|3=5|4=4|5=512|6=256|7=4096");
    EXPECT_EQ(rowOf({4095, 8191, 0, 0}), "1=4095|2=8191|3=0|4=0|5=0|6=1|7=4096");
    EXPECT_EQ(rowOf({65536, 0, 0, 0}, {}, 65536), "1=65536|2=0|3=0|4=0|5=1|6=0|7=65536");
}

TEST(MemoryRow, theFirmwaresSlotsAndTheirCapacityAreAdded)
{
    EXPECT_EQ(rowOf({2097152, 0, 0, 0}, {1024, 4}), "1=2097152|2=0|3=0|4=0|5=512|6=0|7=4096|8=4096|9=4");
}

TEST(MemoryRow, slotsOfUnknownCapacityAreCountedOnly)
{
    EXPECT_EQ(rowOf({2097152, 0, 0, 0}, {0, 2}), "1=2097152|2=0|3=0|4=0|5=512|6=0|7=4096|9=2");
}

TEST(MemoryRow, aCapacityWithoutSlotsIsNoCapacity)
{
    EXPECT_EQ(rowOf({1024, 0, 0, 0}, {512, 0}), "1=1024|2=0|3=0|4=0|5=0|6=0|7=4096");
}

TEST(MemoryRow, aCapacityInMegabytesBelowTheTotalInGigabytesIsNotBelieved)
{
    EXPECT_EQ(rowOf({8388608, 0, 0, 0}, {1, 8}), "1=8388608|2=0|3=0|4=0|5=2048|6=0|7=4096|8=8|9=8");
    EXPECT_EQ(rowOf({8388608, 0, 0, 0}, {1, 7}), "1=8388608|2=0|3=0|4=0|5=2048|6=0|7=4096|9=7");
}

TEST(MemoryRow, theCapacityIsA32BitProduct)
{
    EXPECT_EQ(rowOf({0, 0, 0, 0}, {0x80000000, 2}), "1=0|2=0|3=0|4=0|5=0|6=0|7=4096|9=2");
}

TEST(MemoryLog, standsUnderTheNetworkAdaptersBit)
{
    const auto read = [] {
        MemoryAmounts amounts;
        readText("MemTotal: 5 kB\nMemFree: 4 kB\nMemTotal: 5 kB\n", &amounts);
    };
    EXPECT_EQ(logText(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, read),
              "\nMemTotal: 5 kB\n\nprevious totalPhysMem = 0\n\nMemFree: 4 kB\n\nMemTotal: 5 kB\n"
              "\nmatches sysinfo data, so exiting from getFromMeminfo");
    EXPECT_EQ(logText(~DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, read), "");
    EXPECT_EQ(logText(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_MAIN, read), "");
}

TEST(MemoryLog, saysThatTheFileCannotBeOpened)
{
    const auto read = [] {
        MemoryAmounts amounts;
        TextStream nothing(nullptr);
        readMeminfo(nothing, &amounts);
    };
    EXPECT_EQ(logText(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, read), "\nCould not open file /proc/meminfo\n");
}
