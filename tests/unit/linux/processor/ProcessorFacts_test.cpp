#include "linux/processor/ProcessorFacts.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>

#include "com/VexDebug.h"
#include "tests/unit/LogCapture.h"
#include "tests/unit/TableText.h"
#include "tests/unit/linux/text/TextOf.h"

static CpuInfo cpuOf(std::string text)
{
    TextStream stream = textOf(text);
    return readCpuInfo(stream);
}

static ProcessorFacts factsOf(const std::string& text, const FirmwareProcessor& firmware = {})
{
    return mergeFacts(cpuOf(text), firmware);
}

static std::string rowOf(const ProcessorFacts& facts)
{
    const std::unique_ptr<VexTableRow> row(newProcessorRow(1, "id", facts));
    return rowText(*row);
}

static bool has(const std::string& row, const std::string& attribute)
{
    return ('|' + row + '|').find('|' + attribute + '|') != std::string::npos;
}

static std::string idOf(const ProcessorFacts& facts)
{
    return processorId(facts).get();
}

// A machine that lists so many processors, each with siblings as told.
static CpuInfo machineOf(int processors, const char* siblings)
{
    std::string text;
    for (int i = 0; i < processors; ++i)
        text += "processor\t: " + std::to_string(i) + "\nsiblings\t: " + siblings + "\n";
    return cpuOf(text);
}

TEST(ProcessorFacts, aMeasuredClockBecomesTheMaximumAndTheCurrentSpeed)
{
    const ProcessorFacts facts = factsOf("cpu MHz\t\t: 2793.012\n");
    EXPECT_EQ(facts.maxSpeed, 2800u);
    EXPECT_EQ(facts.currentSpeed, 2800u);
}

TEST(ProcessorFacts, theFirmwareSaysTheCurrentSpeed)
{
    FirmwareProcessor firmware;
    firmware.currentSpeed = 2800;
    EXPECT_EQ(factsOf("cpu MHz\t\t: 2793.012\n", firmware).currentSpeed, 2800u);
    firmware.currentSpeed = 1400;
    EXPECT_EQ(factsOf("cpu MHz\t\t: 2793.012\n", firmware).currentSpeed, 1400u);
    EXPECT_EQ(factsOf("cpu MHz\t\t: 2793.012\n", firmware).maxSpeed, 2800u);
}

TEST(ProcessorFacts, aMaximumSpeedThatBecomesTheCurrentOneIsCutTo16Bits)
{
    const ProcessorFacts facts = factsOf("cpu MHz\t\t: 70000.5\n");
    EXPECT_EQ(facts.maxSpeed, 70000u);
    EXPECT_EQ(facts.currentSpeed, 70000u - 65536u);
}

TEST(ProcessorFacts, theFirmwaresFeaturesCountOnlyWithoutAFlagsLine)
{
    FirmwareProcessor firmware;
    firmware.features = 0x80000003;
    EXPECT_EQ(factsOf("", firmware).features, 0x80000003u);
    EXPECT_EQ(factsOf("flags: tsc\n", firmware).features, 0x10u);
    EXPECT_EQ(factsOf("flags:\n", firmware).features, 0u);
}

TEST(ProcessorFamily, theFirmwaresFamilyWins)
{
    EXPECT_EQ(decideFamily(cpuOf("vendor_id: GenuineIntel\ncpu family: 6\nmodel: 8\n"), 179), 179u);
    EXPECT_EQ(decideFamily(cpuOf("vendor_id: GenuineIntel\ncpu family: 6\nmodel: 8\n"), 3), 3u);
}

TEST(ProcessorFamily, noneOtherAndUnknownAreLookedUpInTheTables)
{
    for (uint32_t family = 0; family < 3; ++family)
        EXPECT_EQ(
            decideFamily(cpuOf("vendor_id: GenuineIntel\ncpu family: 6\nmodel: 8\nmodel name: Celeron\n"), family),
            15u);
    EXPECT_EQ(decideFamily(cpuOf("vendor_id: AuthenticAMD\ncpu family: 15\nmodel: 5\n"), 0), 132u);
    EXPECT_EQ(decideFamily(cpuOf("vendor_id: GenuineTMx86\ncpu family: 6\nmodel: 8\n"), 1), 2u);
    EXPECT_EQ(decideFamily(cpuOf("vendor_id: GenuineIntel\ncpu family: -6\nmodel: 8\n"), 0), 2u);
}

TEST(ProcessorCount, packagesOfTwoLogicalProcessorsCountOnce)
{
    EXPECT_EQ(countProcessors(4, machineOf(4, "2"), CPU_FEATURE_HT, 0), 2);
    EXPECT_EQ(countProcessors(4, machineOf(4, "2"), CPU_FEATURE_HT, 2), 2);
}

TEST(ProcessorCount, siblingsWithoutTheFlagDoNotCount)
{
    EXPECT_EQ(countProcessors(4, machineOf(4, "2"), ~CPU_FEATURE_HT, 0), 4);
    EXPECT_EQ(countProcessors(4, machineOf(4, "1"), CPU_FEATURE_HT, 0), 4);
}

TEST(ProcessorCount, theFirmwaresPopulatedSocketsAreTheLimit)
{
    EXPECT_EQ(countProcessors(2, machineOf(2, "1"), 0, 1), 1);
    EXPECT_EQ(countProcessors(2, machineOf(2, "1"), 0, 2), 2);
    EXPECT_EQ(countProcessors(2, machineOf(2, "1"), 0, 4), 2) << "a lower count is kept";
    EXPECT_EQ(countProcessors(2, machineOf(2, "1"), 0, 0), 2) << "none known";
}

TEST(ProcessorCount, fewerLinesThanLogicalProcessorsGiveNone)
{
    EXPECT_EQ(countProcessors(1, machineOf(1, "2"), CPU_FEATURE_HT, 0), 0);
}

TEST(ProcessorRow, holdsTheFactsInTheCatalogsOrder)
{
    FirmwareProcessor firmware;
    firmware.externalClock = 133;
    firmware.interfaceCode = 10;
    ProcessorFacts facts = factsOf("vendor_id: GenuineIntel\ncpu family: 6\nmodel: 8\nstepping: 10\ncpu MHz: 996.766\n"
                                   "siblings: 2\nflags: fpu vme mmx ht 3dnowext\n",
                                   firmware);
    facts.family = 17;
    EXPECT_EQ(rowOf(facts), "1=1|2=id|3=17|4=1000|5=1000|6=133|7=GenuineIntel|9=10|10=6|11=8|12=10|13=276824067|"
                            "14=Y|15=Y|16=N|17=N|18=N|19=N|20=N|21=N|22=N|23=N|24=N|25=N|26=N|"
                            "27=N|28=N|29=N|30=N|31=N|32=Y|33=N|34=N|35=Y|42=H");
}

TEST(ProcessorRow, leavesOutWhatNobodySays)
{
    EXPECT_EQ(rowOf(factsOf("")), "1=1|2=id|3=0|4=0|5=0|7=|10=0|11=0|12=0|13=0|14=N|15=N|16=N|17=N|18=N|"
                                  "19=N|20=N|21=N|22=N|23=N|24=N|25=N|26=N|27=N|28=N|29=N|30=N|"
                                  "31=N|32=N|33=N|34=N");
}

TEST(ProcessorRow, eachFeatureHasItsBit)
{
    static constexpr int BIT_OF_ATTRIBUTE[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9, 11,
                                               12, 13, 14, 15, 16, 17, 18, 23, 24, 25};
    for (int bit = 0; bit < 32; ++bit) {
        ProcessorFacts facts;
        facts.features = 1u << bit;
        const std::string row = rowOf(facts);
        for (size_t i = 0; i < std::size(BIT_OF_ATTRIBUTE); ++i) {
            const bool set = BIT_OF_ATTRIBUTE[i] == bit || (i == 20 && bit == 26);
            EXPECT_TRUE(has(row, std::to_string(14 + i) + (set ? "=Y" : "=N"))) << bit << ' ' << row;
        }
        EXPECT_TRUE(has(row, "13=" + std::to_string(bit == 31 ? 0 : 1u << bit))) << row;
    }
}

TEST(ProcessorRow, sse2AloneCountsAsBothKindsOfStreamingExtensions)
{
    const ProcessorFacts facts = factsOf("flags: sse2\n");
    EXPECT_EQ(facts.features, 0x6000000u);
    EXPECT_TRUE(has(rowOf(facts), "34=Y"));
}

TEST(ProcessorRow, saysWhether3dnowIsThereOnlyWithAFlagsLine)
{
    EXPECT_TRUE(has(rowOf(factsOf("flags: fpu 3dnow\n")), "35=Y"));
    EXPECT_TRUE(has(rowOf(factsOf("flags: fpu 3dno\n")), "35=N"));
    EXPECT_TRUE(has(rowOf(factsOf("flags:\n")), "35=N"));
    EXPECT_EQ(rowOf(factsOf("")).find("|35="), std::string::npos);
}

TEST(ProcessorRow, hyperThreadingIsMarkedOnEveryRow)
{
    EXPECT_TRUE(has(rowOf(factsOf("siblings: 2\nflags: ht\n")), "42=H"));
    EXPECT_EQ(rowOf(factsOf("siblings: 1\nflags: ht\n")).find("|42="), std::string::npos);
    EXPECT_EQ(rowOf(factsOf("siblings: 2\nflags: fpu\n")).find("|42="), std::string::npos);
}

TEST(ProcessorId, isTheDigestOfTheConcatenatedFacts)
{
    FirmwareProcessor firmware;
    firmware.externalClock = 133;
    firmware.interfaceCode = 10;
    ProcessorFacts facts = factsOf("vendor_id: GenuineIntel\ncpu family: 6\nmodel: 8\nstepping: 10\ncpu MHz: 996.766\n"
                                   "flags: fpu vme mmx fxsr\n",
                                   firmware);
    facts.family = 17;
    // printf GenuineIntel10001000681018000031331017 | md5sum
    EXPECT_EQ(idOf(facts), "b8ab3a22b1b8cacde13a3a61580ced7e");
    // printf 000000000 | md5sum
    EXPECT_EQ(idOf(factsOf("")), "4c93008615c2d041e33ebac605d14b5b");
}

TEST(ProcessorId, changesWithEachOfItsTenFacts)
{
    const auto idWith = [](void (*change)(ProcessorFacts&)) {
        ProcessorFacts facts;
        change(facts);
        return idOf(facts);
    };
    std::set<std::string> ids;
    ids.insert(idWith([](ProcessorFacts&) {}));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.cpu.vendor[0] = 'x'; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.maxSpeed = 11; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.currentSpeed = 12; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.cpu.family = 13; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.cpu.model = 14; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.cpu.stepping = 15; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.features = 0xab; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.externalClock = 17; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.interfaceCode = 18; }));
    ids.insert(idWith([](ProcessorFacts& facts) { facts.family = 19; }));
    EXPECT_EQ(ids.size(), 11u);
}

TEST(ProcessorLog, tellsHowTheCountCameAbout)
{
    const CpuInfo cpu = machineOf(4, "2");
    EXPECT_EQ(logText(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, [&] { countProcessors(4, cpu, CPU_FEATURE_HT, 2); }),
              "\nAPI and cpuinfo processor counts match\npcount=4 logical procs=2\nSMBIOS Populated Processors = 2\n"
              "\nHyperthreading detected: Physical CPU count=2");
    EXPECT_EQ(logText(DEBUG_PROCESSOR, VEX_LEVEL_MAIN, [&] { countProcessors(2, cpu, 0, 0); }),
              "***Processor count == SMBIOS count or SMBIOS count == 0\n***Hyperthreading check not useful \n");
    EXPECT_EQ(logText(DEBUG_PROCESSOR, VEX_LEVEL_MAIN | VEX_LEVEL_DETAIL, [&] { countProcessors(2, cpu, 0, 1); }),
              "\nAPI and cpuinfo processor counts don't match\npcount=4 logical procs=2\n"
              "SMBIOS Populated Processors = 1\n");
}

TEST(ProcessorLog, tellsWhereTheFactsComeFrom)
{
    FirmwareProcessor firmware;
    firmware.features = 0xab;
    EXPECT_EQ(logText(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, [&] { mergeFacts(CpuInfo(), firmware); }),
              "Entering RealSpeedValue(), Exit not logged.\n\nSM_cpuspeed=0 SM_cpuflags=000000ab");
    EXPECT_EQ(logText(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, [&] { decideFamily(CpuInfo(), 2); }),
              "\nSMBIOS Family not found, using old method\ncpuenum=2");
    EXPECT_EQ(logText(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, [&] { decideFamily(CpuInfo(), 11); }), "\ncpuenum=11");
    EXPECT_EQ(logText(~DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, [&] { mergeFacts(CpuInfo(), firmware); }), "");
}

TEST(ProcessorLog, listsTheFlagNamesThatAreLookedFor)
{
    const std::string log = logText(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, [] { makeCPUflagsFromString("fpu"); });
    EXPECT_EQ(log.find("\nparsing CPU flags line: \nfor desc:i=0, fpu\nfor desc:i=1, vme\n"), 0u) << log;
    EXPECT_NE(log.find("\nfor desc:i=21, xmm\nfor desc:i=22, sse2\nfor desc:i=23, htflagVal=00000001"),
              std::string::npos)
        << log;
}

TEST(ProcessorLog, showsTheLineThatIsParsed)
{
    char out[kCpuInfoLineSize];
    EXPECT_EQ(logText(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, [&] { parseLine("model : %s", out); }),
              "\nparsing: model : %s");
}
