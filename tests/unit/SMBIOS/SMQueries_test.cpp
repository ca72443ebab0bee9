// The summary queries on the process-wide table.

#include <gtest/gtest.h>

#include "SMBIOS/SMBIOSTable.h"
#include "SMBIOS/SMMemory.h"
#include "SMBIOS/SMProcessor.h"
#include "SMBIOS/SM_HWSecurity.h"
#include "tests/unit/LogCapture.h"
#include "tests/unit/SMBIOS/TableBuilder.h"

class Queries : public testing::Test
{
protected:
    ~Queries() override
    {
        delete globalSMBIOSTable;
        globalSMBIOSTable = nullptr;
    }

    static void use(const TableBytes& table)
    {
        delete globalSMBIOSTable;
        globalSMBIOSTable = new SMBIOSTable(table.bytes().data(), table.length(), 0x23, table.count());
        globalSMBIOSTable->parseData();
    }
};

static Structure processor(unsigned externalClock, unsigned upgrade)
{
    return Structure(4, 35)
        .byte(5, 3)
        .byte(6, 0x0F)
        .dword(12, 0x8183F9FF)
        .word(18, externalClock)
        .word(22, 1000)
        .byte(24, 0x41)
        .byte(25, upgrade);
}

static Structure controller(unsigned exponent, unsigned slots)
{
    return Structure(5, 16).byte(8, exponent).byte(14, slots);
}

static Structure array(uint32_t capacityKB, unsigned devices)
{
    return Structure(16, 15).byte(4, 3).dword(7, capacityKB).word(13, devices);
}

TEST_F(Queries, withoutTableAnswerNothing)
{
    ASSERT_EQ(globalSMBIOSTable, nullptr);
    unsigned short speed = 9, clock = 9, upgrade = 9, powerOn = 9, other = 9;
    unsigned int size = 9, slots = 9;
    int flags = 9;
    EXPECT_EQ(SM_Processor(&speed, &clock, &upgrade, &flags), 0);
    EXPECT_EQ(speed + clock + upgrade, 0);
    EXPECT_EQ(SM_ProcessorFamily(), 0);
    EXPECT_EQ(SM_ProcessorCount(), 0);
    EXPECT_EQ(SM_PopulatedProcessorCount(), 0);
    EXPECT_EQ(getMemorySpecs(&size, &slots), 0);
    EXPECT_EQ(size + slots, 0u);
    EXPECT_EQ(SM_getBiggestMemoryModule_17(), 0u);
    EXPECT_EQ(SM_getBiggestMemoryModule_6(), 0u);
    EXPECT_EQ(SM_HWSecurity(&powerOn, &other), 1);
    EXPECT_EQ(powerOn, 3);
    EXPECT_EQ(other, 3);
}

TEST_F(Queries, withoutTheRecordsAnswerNothing)
{
    use(TableBytes().add(Structure(0, 19)).end());
    unsigned short speed = 9, clock = 9, upgrade = 9, powerOn = 9, other = 9;
    unsigned int size = 9, slots = 9;
    EXPECT_EQ(SM_Processor(&speed, &clock, &upgrade, nullptr), 0);
    EXPECT_EQ(speed + clock + upgrade, 0);
    EXPECT_EQ(SM_ProcessorFamily(), 0);
    EXPECT_EQ(getMemorySpecs(&size, &slots), 0);
    EXPECT_EQ(size + slots, 0u);
    EXPECT_EQ(SM_HWSecurity(&powerOn, &other), 1);
    EXPECT_EQ(powerOn, 3);
    EXPECT_EQ(other, 3);
}

TEST_F(Queries, answerForTheFirstProcessor)
{
    use(TableBytes().add(processor(133, 4)).add(Structure(4, 35)).end());
    unsigned short speed, clock, upgrade;
    int flags = 0;
    EXPECT_EQ(SM_Processor(&speed, &clock, &upgrade, &flags), 1);
    EXPECT_EQ(speed, 1000);
    EXPECT_EQ(clock, 133);
    EXPECT_EQ(upgrade, 4);
    EXPECT_EQ(static_cast<uint32_t>(flags), 0x8183F9FFU);
    EXPECT_EQ(SM_Processor(&speed, &clock, &upgrade, nullptr), 1);
    EXPECT_EQ(SM_ProcessorFamily(), 0x0F);
    EXPECT_EQ(SM_ProcessorCount(), 2);
    EXPECT_EQ(SM_PopulatedProcessorCount(), 1);
}

TEST_F(Queries, doNotBelieveAClockAbove2000AndAnUpgradeAbove17)
{
    unsigned short speed, clock, upgrade;
    use(TableBytes().add(processor(2133, 18)).end());
    EXPECT_EQ(SM_Processor(&speed, &clock, &upgrade, nullptr), 1);
    EXPECT_EQ(clock, 0);
    EXPECT_EQ(upgrade, 0);
    use(TableBytes().add(processor(2000, 17)).end());
    EXPECT_EQ(SM_Processor(&speed, &clock, &upgrade, nullptr), 1);
    EXPECT_EQ(clock, 2000);
    EXPECT_EQ(upgrade, 17);
}

TEST_F(Queries, widenTheSecurityByteWithItsSign)
{
    const struct {
        unsigned settings;
        unsigned powerOn, other;
    } cases[] = {{0x00, 0, 0}, {0x40, 1, 0x10}, {0x7F, 1, 0x1F}, {0x80, 0x3FE, 0x3FE0}, {0xFF, 0x3FF, 0x3FFF}};
    for (const auto& c : cases) {
        use(TableBytes().add(Structure(24, 5).byte(4, c.settings)).end());
        unsigned short powerOn, other;
        EXPECT_EQ(SM_HWSecurity(&powerOn, &other), 0);
        EXPECT_EQ(powerOn, c.powerOn);
        EXPECT_EQ(other, c.other);
    }
}

TEST_F(Queries, knowPowersOfTwo)
{
    EXPECT_EQ(isPowerOf2(0), 0);
    EXPECT_EQ(isPowerOf2(1), 1);
    EXPECT_EQ(isPowerOf2(6), 0);
    EXPECT_EQ(isPowerOf2(0x80000000), 1);
    EXPECT_EQ(isPowerOf2(0x80000001), 0);
}

TEST_F(Queries, findTheBiggestModules)
{
    use(TableBytes()
            .add(Structure(17, 27).word(12, 512))
            .add(Structure(17, 27).word(12, 1024))
            .add(Structure(17, 27).word(12, 0xFFFF))
            .add(Structure(6, 12).byte(9, 7))
            .add(Structure(6, 12).byte(9, 0x7F))
            .add(Structure(6, 12).byte(9, 9))
            .end());
    EXPECT_EQ(SM_getBiggestMemoryModule_17(), 1048576u);
    EXPECT_EQ(SM_getBiggestMemoryModule_6(), 512u);
    use(TableBytes().add(Structure(6, 12).byte(9, 0x7F)).end());
    EXPECT_EQ(SM_getBiggestMemoryModule_6(), 0u);
}

class MemorySpecs : public Queries
{
protected:
    // "result maxModuleSizeMB slots"
    static std::string of(const TableBytes& table)
    {
        use(table);
        unsigned int size, slots;
        const int result = getMemorySpecs(&size, &slots);
        return std::to_string(result) + " " + std::to_string(size) + " " + std::to_string(slots);
    }
};

TEST_F(MemorySpecs, comeFromTheController)
{
    EXPECT_EQ(of(TableBytes().add(controller(9, 4)).end()), "1 512 4");
    EXPECT_EQ(of(TableBytes().add(controller(0, 4)).end()), "1 0 4");
    EXPECT_EQ(of(TableBytes().add(controller(32, 0)).end()), "0 0 0");
    EXPECT_EQ(of(TableBytes().add(controller(31, 0)).end()), "1 2147483648 0");
}

TEST_F(MemorySpecs, controllerGivesWayToALargerInstalledModule)
{
    EXPECT_EQ(of(TableBytes().add(controller(7, 2)).add(Structure(6, 12).byte(9, 8)).end()), "1 256 2");
    EXPECT_EQ(of(TableBytes().add(controller(9, 2)).add(Structure(6, 12).byte(9, 8)).end()), "1 512 2");
}

TEST_F(MemorySpecs, arrayIsSharedAmongItsSlots)
{
    const Structure oneGB = Structure(17, 27).word(12, 1024);
    EXPECT_EQ(of(TableBytes().add(array(4194304, 4)).add(oneGB).end()), "1 1024 4");
    const Structure twoGB = Structure(17, 27).word(12, 2048);
    EXPECT_EQ(of(TableBytes().add(array(4194304, 4)).add(twoGB).end()), "1 4096 4");
    EXPECT_EQ(of(TableBytes().add(array(3145728, 4)).add(oneGB).end()), "1 768 4");
    EXPECT_EQ(of(TableBytes().add(array(4194304, 3)).end()), "1 4096 3");
    EXPECT_EQ(of(TableBytes().add(array(4194304, 0)).end()), "0 0 0");
}

TEST_F(MemorySpecs, slotsOfTheControllerCountBeforeThoseOfTheArray)
{
    EXPECT_EQ(of(TableBytes().add(controller(9, 2)).add(array(4194304, 4)).end()), "1 2048 2");
    EXPECT_EQ(of(TableBytes().add(controller(12, 2)).add(array(4194304, 4)).end()), "1 4096 2");
    EXPECT_EQ(of(TableBytes().add(controller(12, 0)).add(array(4194304, 4)).end()), "1 4096 4");
}

TEST_F(MemorySpecs, areTraced)
{
    use(TableBytes().add(controller(7, 2)).add(Structure(6, 12).byte(9, 8)).add(array(4194304, 4)).end());
    unsigned int size, slots;
    EXPECT_EQ(logText(0x2, VEX_LEVEL_DETAIL, [&] { getMemorySpecs(&size, &slots); }),
              "\n  SMBIOS Table 5 is available.\n  SMBIOS Table 16 is available.\n  SMBIOS Table 6 is available."
              "\n  Table 5: Max Module Size: 128 Slots: 2\n Table 6 MaxModuleSize (calc) found: 256"
              "\nraw maxModuleSizeMB = 4096MB, divided by slots: 2048MB\nbiggestModule found (SMB): 0MB"
              "\n  Table 16: Max Module Size: 2048 Slots: 2");
    EXPECT_EQ(logText(0x10, VEX_LEVEL_DETAIL, [&] { getMemorySpecs(&size, &slots); }),
              "\nraw maxModuleSizeMB = 4096MB, divided by slots: 2048MB\nbiggestModule found (SMB): 0MB");
}
