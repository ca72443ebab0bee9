// Processor, Memory, UNIX System Params and Lpar on machines made for one question each.

#include <chrono>
#include <gtest/gtest.h>
#include <set>

#include "FakeMachine.h"

static std::string processorBlock(int number, const std::string& siblings, const std::string& flags)
{
    return "processor\t: " + std::to_string(number) +
           "\nvendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel\t\t: 8\n"
           "model name\t: Pentium III (Coppermine)\nstepping\t: 6\ncpu MHz\t\t: 866.707\nsiblings\t: " +
           siblings + "\nflags\t\t: " + flags + "\n\n";
}

static FakeMachine machineOf(int processors, const std::string& siblings, const std::string& flags)
{
    FakeMachine machine;
    std::string list;
    for (int i = 0; i < processors; ++i)
        list += processorBlock(i, siblings, flags);
    machine.file("/proc/cpuinfo", list);
    machine.conf("nprocs " + std::to_string(processors));
    return machine;
}

TEST(Processor, aCountThatNoKernelHasDoesNotFillTheMemory)
{
    FakeMachine machine;
    machine.conf("nprocs 16777217");
    ScanOptions options;
    options.secondsAllowed = 120;
    const ScanResult result = machine.scan(options);
    ASSERT_TRUE(result.ended()) << result.errors;
    EXPECT_EQ(result.rows("Processor").size(), 16384u);
    EXPECT_TRUE(result.logHas("get_nprocs() count=16777217"));
}

// Memory with a structure table of these records.
static std::string firmware(const std::string& records)
{
    return "size 0x100000\nstructures at 0xF0800\n" + records +
           "struct type 127 { }\nsmbios-entry at 0xF0000 table 0xF0800 version 2.3\n";
}

// A processor record: clocks in MHz, status 0x41 populated, 0 empty.
static std::string processorRecord(int currentSpeed, int externalClock, int status, int family = 2)
{
    return "struct type 4 length 35 {\n byte 0 byte 3 byte " + std::to_string(family) + "\n at 18 word " +
           std::to_string(externalClock) + " word 3000 word " + std::to_string(currentSpeed) + " byte " +
           std::to_string(status) + " byte 8\n}\n";
}

static std::string controllerRecord(int exponent, int slots)
{
    return "struct type 5 length 16 {\n at 8 byte " + std::to_string(exponent) + "\n at 14 byte " +
           std::to_string(slots) + "\n}\n";
}

static FakeMachine machineWithMemory(const std::string& total)
{
    FakeMachine machine;
    machine.file("/proc/meminfo", "MemTotal: " + total + " kB\nMemFree: 4096 kB\nSwapTotal: 10 kB\nSwapFree: 9 kB\n");
    return machine;
}

TEST(ProcessorScan, aSecondLogicalProcessorIsNoRowWhenTheFirmwareKnowsOneSocket)
{
    FakeMachine machine = machineOf(2, "1", "fpu");
    machine.memory(firmware(processorRecord(866, 133, 0x41) + processorRecord(0, 0, 0)));
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.rows("Processor").size(), 1u);
    EXPECT_EQ(result.value("Lpar", 0, "NodeCapacity"), "2.000000") << "the firmware's sockets do not count there";
}

TEST(ProcessorScan, aFirmwareWithoutPopulatedSocketsLowersNothing)
{
    FakeMachine machine = machineOf(2, "1", "fpu");
    machine.memory(firmware(processorRecord(0, 0, 0)));
    EXPECT_EQ(machine.scan().rows("Processor").size(), 2u);
}

TEST(ProcessorScan, fewerProcessorsThanPopulatedSocketsAreBelieved)
{
    FakeMachine machine = machineOf(1, "1", "fpu");
    machine.memory(firmware(processorRecord(866, 133, 0x41) + processorRecord(866, 133, 0x41)));
    EXPECT_EQ(machine.scan().rows("Processor").size(), 1u);
}

TEST(ProcessorScan, packagesAreCountedAndMarked)
{
    const ScanResult result = machineOf(4, "2", "fpu ht").scan();
    ASSERT_EQ(result.rows("Processor").size(), 2u);
    EXPECT_EQ(result.value("Processor", 0, "CPUEnabled"), "H");
    EXPECT_EQ(result.value("Processor", 1, "CPUEnabled"), "H");
    EXPECT_EQ(result.value("Lpar", 0, "NodeCapacity"), "2.000000");
}

TEST(ProcessorScan, siblingsWithoutTheFlagDoNotCount)
{
    const ScanResult result = machineOf(2, "2", "fpu").scan();
    EXPECT_EQ(result.rows("Processor").size(), 2u);
    EXPECT_FALSE(result.has("Processor", 0, "CPUEnabled"));
}

TEST(ProcessorScan, aHyperThreadedProcessorIsANodeOfOne)
{
    const ScanResult result = machineOf(2, "2", "fpu ht").scan();
    EXPECT_EQ(result.value("Lpar", 0, "NodeCapacity"), "1.000000");
    EXPECT_EQ(result.value("Lpar", 0, "LparCapacity"), "-1.000000");
    EXPECT_EQ(result.value("Lpar", 0, "SharedPoolCapacity"), "-1.000000");
    EXPECT_EQ(result.value("Lpar", 0, "LparID"), "");
    EXPECT_EQ(result.value("Lpar", 0, "SharedPoolID"), "");
}

TEST(ProcessorScan, theFirmwareAddsSpeedsInterfaceAndFamily)
{
    FakeMachine machine = machineOf(1, "1", "fpu");
    machine.memory(firmware(processorRecord(850, 100, 0x41, 17)));
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value("Processor", 0, "MaxClockSpeed"), "866");
    EXPECT_EQ(result.value("Processor", 0, "CurrentClockSpeed"), "850");
    EXPECT_EQ(result.value("Processor", 0, "ExternalClockSpeed"), "100");
    EXPECT_EQ(result.value("Processor", 0, "Interface"), "Slot 1");
    EXPECT_EQ(result.value("Processor", 0, "Family"), "Pentium III");
    EXPECT_FALSE(result.logHas("SMBIOS Family not found"));
}

TEST(ProcessorScan, withoutFirmwareTheKernelsWordStandsAlone)
{
    const ScanResult result = machineOf(1, "1", "fpu").scan();
    EXPECT_EQ(result.value("Processor", 0, "CurrentClockSpeed"), "866");
    EXPECT_FALSE(result.has("Processor", 0, "ExternalClockSpeed"));
    EXPECT_FALSE(result.has("Processor", 0, "Interface"));
    EXPECT_EQ(result.value("Processor", 0, "Family"), "Pentium III");
    EXPECT_TRUE(result.logHas("\nSMBIOS Family not found, using old method\ncpuenum=17\n"));
}

TEST(ProcessorScan, aVendorOfMarkupAndControlCharactersStaysAValue)
{
    FakeMachine machine;
    machine.file("/proc/cpuinfo", "processor: 0\nvendor_id: <&>\"'\n");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.ended());
    EXPECT_EQ(result.value("Processor", 0, "Manufacturer"), "<&>\"'");
}

TEST(ProcessorScan, aThousandProcessorsAreRowsOfOneIdentifier)
{
    constexpr int PROCESSORS = 1024;
    FakeMachine machine = machineOf(PROCESSORS, "1", "fpu ht " + std::string(4000, 'x'));
    const auto start = std::chrono::steady_clock::now();
    const ScanResult result = machine.scan();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    ASSERT_TRUE(result.ended());
    const std::vector<ReportRow> rows = result.rows("Processor");
    ASSERT_EQ(rows.size(), static_cast<size_t>(PROCESSORS));
    std::set<std::string> ids;
    for (const ReportRow& row : rows)
        ids.insert(*row.find("ID"));
    EXPECT_EQ(ids.size(), 1u);
    EXPECT_EQ(*rows.back().find("Index"), "1024");
    EXPECT_EQ(result.value("Lpar", 0, "NodeCapacity"), "1024.000000");
    EXPECT_LT(seconds.count(), 20.0) << "the time must not grow with the square of the processors";
}

TEST(MemoryScan, pagesAreKilobytesDividedByBytes)
{
    const ScanResult result = machineWithMemory("2097152").conf("pagesize 4096").scan();
    EXPECT_EQ(result.value("Memory", 0, "TotalPhysical"), "2097152");
    EXPECT_EQ(result.value("Memory", 0, "TotalPage"), "512");
    EXPECT_EQ(result.value("Memory", 0, "FreePage"), "1");
    EXPECT_EQ(result.value("Memory", 0, "PageSize"), "4096");
    EXPECT_TRUE(result.logHas("\ngetFromMeminfo successful"));
}

TEST(MemoryScan, theFirmwaresSlotsAreReported)
{
    const ScanResult result = machineWithMemory("2097152").memory(firmware(controllerRecord(10, 4))).scan();
    EXPECT_EQ(result.value("Memory", 0, "MaxMemoryMB"), "4096");
    EXPECT_EQ(result.value("Memory", 0, "NumSlotsSupported"), "4");
}

TEST(MemoryScan, slotsOfUnknownSizeAreOnlyCounted)
{
    const ScanResult result = machineWithMemory("2097152").memory(firmware(controllerRecord(0, 2))).scan();
    EXPECT_FALSE(result.has("Memory", 0, "MaxMemoryMB"));
    EXPECT_EQ(result.value("Memory", 0, "NumSlotsSupported"), "2");
}

TEST(MemoryScan, withoutMeminfoTheKernelIsAsked)
{
    FakeMachine machine;
    machine.conf("sysinfo totalram 1073742847").conf("sysinfo freeram 1024").conf("sysinfo totalswap 2047");
    machine.conf("sysinfo mem_unit 4096");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value("Memory", 0, "TotalPhysical"), "1048576") << "the unit does not count";
    EXPECT_EQ(result.value("Memory", 0, "FreePhysical"), "1");
    EXPECT_EQ(result.value("Memory", 0, "TotalVirtual"), "1");
    EXPECT_EQ(result.value("Memory", 0, "FreeVirtual"), "0");
    EXPECT_TRUE(result.logHas("\nCould not open file /proc/meminfo\n\ngetFromMeminfo returned 0 - using sysinfo"));
}

TEST(MemoryScan, aTotalOf0InMeminfoIsNotBelieved)
{
    FakeMachine machine = machineWithMemory("0");
    machine.conf("sysinfo totalram 4194304");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value("Memory", 0, "TotalPhysical"), "4096");
    EXPECT_EQ(result.value("Memory", 0, "FreePhysical"), "0") << "nothing of the file is kept";
}

TEST(MemoryScan, whenTheKernelDoesNotAnswerEitherTheAmountsAre0)
{
    const ScanResult result = FakeMachine().scan();
    EXPECT_EQ(result.value("Memory", 0, "TotalPhysical"), "0");
    EXPECT_EQ(result.value("Memory", 0, "FreeVirtual"), "0");
    EXPECT_FALSE(result.has("Memory", 0, "MaxMemoryMB"));
    EXPECT_FALSE(result.has("Memory", 0, "NumSlotsSupported"));
}

static FakeMachine machineWithRunLevelRecord()
{
    FakeMachine machine;
    machine.conf("login RUN_LVL 1066730012 line ~ id ~~ user runlevel").conf("uname nodename workshop");
    return machine;
}

TEST(UnixSystemParamsScan, theRunLevelsDigitIsReported)
{
    const ScanResult result = machineWithRunLevelRecord().command("/sbin/runlevel", "N 5\n").scan();
    EXPECT_EQ(result.value("UNIXSystemParams", 0, "RunLevel"), "5");
    EXPECT_EQ(result.value("UNIXSystemParams", 0, "BootTime"), "2003-10-21-09.53.32.0000000");
    EXPECT_EQ(result.value("UNIXSystemParams", 0, "Hostname"), "workshop");
    EXPECT_EQ(result.value("UNIXSystemParams", 0, "ComputerAlias"), "workshop");
}

TEST(UnixSystemParamsScan, anUnknownRunLevelIsItsThirdLetter)
{
    const ScanResult result = machineWithRunLevelRecord().command("/sbin/runlevel", "unknown\n", 1).scan();
    EXPECT_EQ(result.value("UNIXSystemParams", 0, "RunLevel"), "59");
    EXPECT_TRUE(result.logHas("\nLinux runlevel=>unknown\n<"));
}

TEST(UnixSystemParamsScan, aCharacterBelowZeroGivesANegativeLevel)
{
    const ScanResult result = machineWithRunLevelRecord().command("/sbin/runlevel", "N  \n").scan();
    EXPECT_EQ(result.value("UNIXSystemParams", 0, "RunLevel"), "-16");
}

TEST(UnixSystemParamsScan, withoutTheCommandTheRunLevelIs0)
{
    for (ScanResult result :
         {machineWithRunLevelRecord().scan(), machineWithRunLevelRecord().command("/sbin/runlevel", "").scan(),
          machineWithRunLevelRecord().commandFails("/sbin/runlevel").scan()}) {
        EXPECT_EQ(result.value("UNIXSystemParams", 0, "RunLevel"), "0");
        EXPECT_FALSE(result.logHas("Linux runlevel"));
    }
}

TEST(UnixSystemParamsScan, withoutTheRecordTheGroupIsMissing)
{
    FakeMachine machine;
    machine.conf("login BOOT_TIME 1066730012").conf("uname nodename workshop").command("/sbin/runlevel", "N 5\n");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.rows("UNIXSystemParams").empty());
    EXPECT_TRUE(result.logHas("\nuname nodename=workshop\nEnd Group UnixSystemParams getTable()"));
    EXPECT_TRUE(FakeMachine().scan().rows("UNIXSystemParams").empty());
}

TEST(UnixSystemParamsScan, aFullLineFieldIsLoggedWithinItsBounds)
{
    FakeMachine machine;
    machine.conf("login RUN_LVL 1066730012 line " + std::string(32, 'l') + " id idid user runlevel");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.logHas("\nRUNLEVEL line=" + std::string(32, 'l') + "\nRUNLEVEL uptime=1066730012 "));
}
