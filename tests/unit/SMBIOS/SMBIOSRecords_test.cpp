// Every accessor of every record, on structures built field by field as tables of each version have them.

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

#include "SMBIOS/SMBIOSTable.h"
#include "com/Owned.h"
#include "tests/unit/Capture.h"
#include "tests/unit/SMBIOS/TableBuilder.h"

// A version of the standard: the lengths that its structures have, and which version tests its tables pass (3.0 and 3.1
// fall through tests that look at the bytes one by one).
struct Version {
    const char* name;
    int revision;
    bool passes21;
    bool passes23;
    size_t bios, system, enclosure, processor, controller, slot, array, device, battery;
};

static const Version kVersions[] = {
    {"v2_0", 0x0200, false, false, 18, 8, 9, 26, 15, 12, 15, 21, 16},
    {"v2_1", 0x0201, true, false, 19, 25, 13, 32, 16, 13, 15, 21, 16},
    {"v2_2", 0x0202, true, false, 19, 25, 13, 32, 16, 13, 15, 21, 26},
    {"v2_3", 0x0203, true, true, 19, 25, 21, 35, 16, 13, 15, 27, 26},
    {"v2_4", 0x0204, true, true, 24, 27, 21, 35, 16, 13, 15, 27, 26},
    {"v2_7", 0x0207, true, true, 24, 27, 22, 42, 16, 17, 23, 34, 26},
    {"v2_8", 0x0208, true, true, 24, 27, 22, 42, 16, 17, 23, 40, 26},
    {"v3_0", 0x0300, false, false, 24, 27, 22, 48, 16, 17, 23, 40, 26},
    {"v3_1", 0x0301, true, false, 26, 27, 22, 48, 16, 17, 23, 40, 26},
};

class Records : public testing::TestWithParam<Version>
{
protected:
    // Reads the structure, which must lead exactly to its end.
    template <class Record>
    std::unique_ptr<Record> read(const Structure& structure)
    {
        auto record = std::make_unique<Record>(GetParam().revision);
        EXPECT_EQ(record->hasData(), 0);
        EXPECT_EQ(record->readBlock(structure.block().data(), 0), static_cast<int>(structure.bytes().size()));
        EXPECT_EQ(record->hasData(), 1);
        EXPECT_EQ(record->getRevision(), GetParam().revision);
        return record;
    }

    bool is21() const { return GetParam().passes21; }
    bool is23() const { return GetParam().passes23; }
};

INSTANTIATE_TEST_SUITE_P(versions, Records, testing::ValuesIn(kVersions),
                         [](const auto& version) { return version.param.name; });

TEST_P(Records, bios)
{
    const auto record = read<SMBIOSTable0Data>(Structure(0, GetParam().bios)
                                                   .string(4, "Vendor")
                                                   .string(5, "1.07")
                                                   .word(6, 0xE800)
                                                   .string(8, "07/15/2004")
                                                   .byte(9, 7)
                                                   .dword(10, 0x7FC9DE90)
                                                   .dword(14, 0x12345678)
                                                   .byte(18, 0x37)
                                                   .byte(19, 0x05));
    EXPECT_STREQ(record->getVendor(), "Vendor");
    EXPECT_STREQ(record->getVersion(), "1.07");
    EXPECT_EQ(record->getStartAddrSeg(), 0xE800);
    EXPECT_STREQ(record->getReleaseDate(), "07/15/2004");
    EXPECT_STREQ(OwnedText(record->getReleaseDateAsYYYYMMDD()).get(), "2004-07-15");
    EXPECT_EQ(record->getROMSizeKB(), 512);
    EXPECT_EQ(record->getCharacteristicsHigh(), 0x7FC9DE90U);
    EXPECT_EQ(record->getCharacteristicsLow(), 0x12345678U);
    // A 2.0 structure ends before the extension byte: the first string stands there.
    EXPECT_EQ(record->getExtensionByte1(), GetParam().bios == 18 ? 'V' : 0x37);
}

TEST_P(Records, system)
{
    Structure structure(1, GetParam().system);
    structure.string(4, "Maker").string(5, "Model 9").string(6, "v3").string(7, "SN-1").byte(24, 6);
    for (unsigned i = 0; i < 16; ++i)
        structure.byte(8 + i, 0xA0 + i);
    const auto record = read<SMBIOSTable1Data>(structure);
    EXPECT_STREQ(record->getManufacturer(), "Maker");
    EXPECT_STREQ(record->getProduct(), "Model 9");
    EXPECT_STREQ(record->getVersion(), "v3");
    EXPECT_STREQ(record->getSerialNumber(), "SN-1");
    EXPECT_STREQ(record->getUUIDAsString(), is21() ? "A0A1A2A3A4A5A6A7A8A9AAABACADAEAF" : nullptr);
    EXPECT_EQ(record->getWakeUpType(), is21() ? 6 : 0);
}

TEST_P(Records, board)
{
    const auto record = read<SMBIOSTable2Data>(
        Structure(2, 8).string(4, "Maker").string(5, "Board").string(6, "A01").string(7, "B-77"));
    EXPECT_STREQ(record->getManufacturer(), "Maker");
    EXPECT_STREQ(record->getProduct(), "Board");
    EXPECT_STREQ(record->getVersion(), "A01");
    EXPECT_STREQ(record->getSerialNumber(), "B-77");
}

TEST_P(Records, enclosure)
{
    const auto record = read<SMBIOSTable3Data>(Structure(3, GetParam().enclosure)
                                                   .string(4, "Maker")
                                                   .byte(5, 0x8A)
                                                   .string(6, "E2")
                                                   .string(7, "E-5")
                                                   .string(8, "Asset"));
    EXPECT_STREQ(record->getManufacturer(), "Maker");
    EXPECT_EQ(record->getType(), 0x8A);
    EXPECT_STREQ(record->getVersion(), "E2");
    EXPECT_STREQ(record->getSerialNumber(), "E-5");
    EXPECT_STREQ(record->getAssetTag(), "Asset");
}

TEST_P(Records, processor)
{
    const auto record = read<SMBIOSTable4Data>(Structure(4, GetParam().processor)
                                                   .string(4, "CPU 1")
                                                   .byte(5, 3)
                                                   .byte(6, 0xB3)
                                                   .string(7, "Maker")
                                                   .dword(8, 0x00000F29)
                                                   .dword(12, 0xBFEBFBFF)
                                                   .string(16, "Chip 2.8")
                                                   .byte(17, 0x8F)
                                                   .word(18, 533)
                                                   .word(20, 3200)
                                                   .word(22, 2800)
                                                   .byte(24, 0x41)
                                                   .byte(25, 4)
                                                   .string(32, "P-SN")
                                                   .string(33, "P-AT"));
    EXPECT_STREQ(record->getSocket(), "CPU 1");
    EXPECT_EQ(record->getType(), 3);
    EXPECT_EQ(record->getFamily(), 0xB3);
    EXPECT_STREQ(record->getManufacturer(), "Maker");
    EXPECT_EQ(record->getEAX(), 0xF29U);
    EXPECT_EQ(record->getCPUIDFamily(), 15);
    EXPECT_EQ(record->getCPUIDModel(), 2);
    EXPECT_EQ(record->getCPUIDStepping(), 9);
    EXPECT_EQ(record->getEDX(), 0xBFEBFBFFU);
    EXPECT_STREQ(record->getVersion(), "Chip 2.8");
    EXPECT_EQ(record->getVoltage(), 0x8F);
    EXPECT_DOUBLE_EQ(record->getVoltageInVolts(), 1.5);
    EXPECT_EQ(record->getExternalClock(), 533);
    EXPECT_EQ(record->getMaxSpeed(), 3200);
    EXPECT_EQ(record->getCurrentSpeed(), 2800);
    EXPECT_EQ(record->getStatus(), 0x41);
    EXPECT_EQ(record->isPopulated(), 1);
    EXPECT_EQ(record->getUpgrade(), 4);
    EXPECT_STREQ(record->getSerialNumber(), is23() ? "P-SN" : nullptr);
    EXPECT_STREQ(record->getAssetTag(), is23() ? "P-AT" : nullptr);
}

TEST_P(Records, memoryController)
{
    const auto record =
        read<SMBIOSTable5Data>(Structure(5, GetParam().controller).byte(8, 9).word(9, 0x0C).byte(14, 4));
    EXPECT_EQ(record->getMaximumMemoryModuleSize(), 9);
    EXPECT_EQ(record->getNumAssocMemorySlots(), 4);
    EXPECT_EQ(record->stringFromIndex(1), nullptr);
}

TEST_P(Records, memoryModule)
{
    const auto record = read<SMBIOSTable6Data>(Structure(6, 12)
                                                   .string(4, "DIMM 1")
                                                   .byte(5, 0x12)
                                                   .byte(6, 60)
                                                   .word(7, 0x0540)
                                                   .byte(9, 0x87)
                                                   .byte(10, 0x06)
                                                   .byte(11, 0x02));
    EXPECT_STREQ(record->getSocketDesignation(), "DIMM 1");
    EXPECT_EQ(record->getBankConnections(), 0x12);
    EXPECT_EQ(record->getCurrentSpeed(), 60);
    EXPECT_EQ(record->getMemoryType(), 0x0540);
    EXPECT_EQ(record->getInstalledSize(), 0x87);
    EXPECT_EQ(record->getInstalledSizeMB(), 128);
    EXPECT_EQ(record->getEnabledSize(), 6);
    EXPECT_EQ(record->getEnabledSizeMB(), 64);
    EXPECT_EQ(record->getErrorStatus(), 2);
}

TEST_P(Records, portConnector)
{
    const auto record = read<SMBIOSTable8Data>(
        Structure(8, 9).string(4, "J1").byte(5, 0x16).string(6, "COM A").byte(7, 0x08).byte(8, 0x09));
    EXPECT_STREQ(record->getInternalDesignator(), "J1");
    EXPECT_EQ(record->getInternalConnectorType(), 0x16);
    EXPECT_STREQ(record->getExternalDesignator(), "COM A");
    EXPECT_EQ(record->getExternalConnectorType(), 8);
    EXPECT_EQ(record->getPortType(), 9);
}

TEST_P(Records, slot)
{
    const auto record = read<SMBIOSTable9Data>(Structure(9, GetParam().slot)
                                                   .string(4, "PCI 1")
                                                   .byte(5, 6)
                                                   .byte(6, 5)
                                                   .byte(7, 4)
                                                   .byte(8, 3)
                                                   .word(9, 0x0102)
                                                   .byte(11, 0x0E)
                                                   .byte(12, 0x03));
    EXPECT_STREQ(record->getSlotDesignation(), "PCI 1");
    EXPECT_EQ(record->getSlotType(), 6);
    EXPECT_EQ(record->getSlotDataBusWidth(), 5);
    EXPECT_EQ(record->getCurrentUsage(), 4);
    EXPECT_EQ(record->getSlotLength(), 3);
    EXPECT_EQ(record->getSlotID(), 0x0102);
    EXPECT_EQ(record->getSlotCharacteristics1(), 0x0E);
    EXPECT_EQ(record->getSlotCharacteristics2(), is21() ? 3 : 0);
}

TEST_P(Records, onBoardDevice)
{
    const auto record =
        read<SMBIOSTable10Data>(Structure(10, 8).byte(4, 0x83).string(5, "Video").byte(6, 0x05).string(7, "Network"));
    EXPECT_EQ(record->getDeviceType(), 0x83);
    EXPECT_EQ(record->getDeviceTypeActual(), 3);
    EXPECT_EQ(record->isEnabled(), 1);
    EXPECT_STREQ(record->getDescription(), "Video");
}

TEST_P(Records, oemStrings)
{
    const auto record = read<SMBIOSTable11Data>(Structure(11, 5).byte(4, 2).addString("one").addString("two"));
    EXPECT_EQ(record->getCount(), 2);
    EXPECT_STREQ(record->getString(1), "one");
    EXPECT_STREQ(record->getString(2), "two");
    EXPECT_EQ(record->getString(3), nullptr);
    const std::string dump = capturedOutput([&] { record->dump(); });
    const size_t title = dump.find("\nSMBIOS Table 11 Data - OEM Strings Information");
    EXPECT_LT(title, dump.find("one"));
    EXPECT_LT(dump.find("one"), dump.find("two"));
    EXPECT_NE(dump.find("two"), std::string::npos);
}

TEST_P(Records, memoryArray)
{
    const auto record = read<SMBIOSTable16Data>(
        Structure(16, GetParam().array).byte(4, 3).byte(5, 3).dword(7, 0x00400000).word(11, 0xFFFE).word(13, 12));
    EXPECT_EQ(record->getMaxCapacity(), 0x00400000U);
    EXPECT_EQ(record->getNumMemDevices(), 12);
    EXPECT_EQ(record->stringFromIndex(1), nullptr);
}

TEST_P(Records, memoryDevice)
{
    const auto record = read<SMBIOSTable17Data>(Structure(17, GetParam().device)
                                                    .word(4, 0x1000)
                                                    .word(6, 0xFFFE)
                                                    .word(8, 72)
                                                    .word(10, 64)
                                                    .word(12, 512)
                                                    .byte(14, 9)
                                                    .byte(15, 1)
                                                    .string(16, "DIMM0")
                                                    .string(17, "BANK0")
                                                    .byte(18, 15)
                                                    .word(19, 0x0080)
                                                    .word(21, 266)
                                                    .string(23, "Maker")
                                                    .string(24, "SN")
                                                    .string(25, "AT")
                                                    .string(26, "PN"));
    EXPECT_EQ(record->getMemoryArrayHandle(), 0x1000);
    EXPECT_EQ(record->getMemoryErrorHandle(), 0xFFFE);
    EXPECT_EQ(record->getTotalWidth(), 72);
    EXPECT_EQ(record->getDataWidth(), 64);
    EXPECT_EQ(record->getSize(), 512);
    EXPECT_EQ(record->getSizeKB(), 524288);
    EXPECT_EQ(record->getFormFactor(), 9);
    EXPECT_EQ(record->getDeviceSet(), 1);
    EXPECT_STREQ(record->getDeviceLocator(), "DIMM0");
    EXPECT_STREQ(record->getBankLocator(), "BANK0");
    EXPECT_EQ(record->getMemoryType(), 15);
    EXPECT_EQ(record->getTypeDetail(), 0x0080);
    EXPECT_EQ(record->getSpeed(), is23() ? 266 : 0);
    EXPECT_STREQ(record->getManufacturer(), is23() ? "Maker" : nullptr);
    EXPECT_STREQ(record->getSerialNumber(), is23() ? "SN" : nullptr);
    EXPECT_STREQ(record->getAssetTag(), is23() ? "AT" : nullptr);
    EXPECT_STREQ(record->getPartNumber(), is23() ? "PN" : nullptr);
}

TEST_P(Records, battery)
{
    const auto record = read<SMBIOSTable22Data>(Structure(22, GetParam().battery)
                                                    .string(4, "Rear")
                                                    .string(5, "Maker")
                                                    .string(6, "2003-01-02")
                                                    .string(7, "BAT-1")
                                                    .string(8, "Cell"));
    EXPECT_STREQ(record->getLocation(), "Rear");
    EXPECT_STREQ(record->getManufacturer(), "Maker");
    EXPECT_STREQ(record->getManufactureDate(), "2003-01-02");
    EXPECT_STREQ(record->getSerialNumber(), "BAT-1");
    EXPECT_STREQ(record->getDeviceName(), "Cell");
}

TEST_P(Records, hardwareSecurity)
{
    EXPECT_EQ(read<SMBIOSTable24Data>(Structure(24, 5).byte(4, 0x7F))->getHWSecStatus(), 127);
    EXPECT_EQ(read<SMBIOSTable24Data>(Structure(24, 5).byte(4, 0x80))->getHWSecStatus(), -128);
}

// The records whose result does not depend on the version.

template <class Record>
static std::unique_ptr<Record> recordOf(const Structure& structure)
{
    auto record = std::make_unique<Record>(0x0203);
    record->readBlock(structure.block().data(), 0);
    return record;
}

TEST(BiosCharacteristics, eachAccessorHasItsBit)
{
    using Bios = SMBIOSTable0Data;
    int (Bios::*const flags[])() const = {
        &Bios::isISASupported,    &Bios::isMCASupported,    &Bios::isEISASupported,  &Bios::isPCISupported,
        &Bios::isPCMCIASupported, &Bios::isPnPSupported,    &Bios::isAPMSupported,   &Bios::isFlashableBIOS,
        &Bios::isBIOSShadowing,   &Bios::isVLVESASupported, &Bios::isESCDSupported,  &Bios::isCDBootSupported,
        &Bios::isSelectableBoot,  &Bios::isBIOSROMSocketed, &Bios::isPCCardBootable, &Bios::isEnhancedDiskDrive};
    for (unsigned bit = 0; bit < 32; ++bit) {
        const auto bios = recordOf<Bios>(Structure(0, 19).dword(10, 1U << bit).dword(14, ~0U));
        for (unsigned i = 0; i < 16; ++i)
            EXPECT_EQ((*bios.*flags[i])(), bit == i + 4 ? 1 : 0) << bit << " " << i;
    }
    int (Bios::*const extensions[])()
        const = {&Bios::isACPISupported,     &Bios::isUSBLegacySupported, &Bios::isAGPSupported,
                 &Bios::isI2OBootSupported,  &Bios::isLS120BootSupported, &Bios::isATAPIZipBootSupported,
                 &Bios::is1394BootSupported, &Bios::isSmartBatteryBIOS};
    for (unsigned bit = 0; bit < 8; ++bit) {
        const auto bios = recordOf<Bios>(Structure(0, 19).byte(18, 1U << bit));
        for (unsigned i = 0; i < 8; ++i)
            EXPECT_EQ((*bios.*extensions[i])(), bit == i ? 1 : 0) << bit << " " << i;
    }
}

static std::string releaseDate(const std::string& text)
{
    const auto bios = recordOf<SMBIOSTable0Data>(Structure(0, 19).string(8, text));
    const OwnedText date(bios->getReleaseDateAsYYYYMMDD());
    return date == nullptr ? "null" : date.get();
}

TEST(ReleaseDate, isReadInEachForm)
{
    EXPECT_EQ(releaseDate("12/31/99"), "1999-12-31");
    EXPECT_EQ(releaseDate("01/02/03"), "2003-01-02");
    EXPECT_EQ(releaseDate("01/02/10"), "1910-01-02");
    EXPECT_EQ(releaseDate("07/15/2004"), "2004-07-15");
    EXPECT_EQ(releaseDate("2004"), "2004");
    EXPECT_EQ(releaseDate("98/07/5."), "1998-07-05");
    EXPECT_EQ(releaseDate("07/15/04 rev B"), "2004-07-15");
    EXPECT_EQ(releaseDate("a text of more than 15"), "a");
    EXPECT_EQ(releaseDate("0123456789abcdefgh"), "0123456789abcde");
}

TEST(ReleaseDate, isNullWithoutTheString)
{
    EXPECT_EQ(recordOf<SMBIOSTable0Data>(Structure(0, 19))->getReleaseDateAsYYYYMMDD(), nullptr);
    EXPECT_EQ(recordOf<SMBIOSTable0Data>(Structure(0, 19))->getReleaseDateAsTimeT(), 0);
}

TEST(ReleaseDate, isLocalMidnightAsTime)
{
    const auto bios = recordOf<SMBIOSTable0Data>(Structure(0, 19).string(8, "07/15/2004"));
    const time_t time = bios->getReleaseDateAsTimeT();
    const tm* const local = localtime(&time);
    EXPECT_EQ(local->tm_year, 104);
    EXPECT_EQ(local->tm_mon, 6);
    EXPECT_EQ(local->tm_mday, 15);
}

TEST(ReleaseDate, shortTextAsTimeStaysInsideItsBuffer)
{
    const auto bios = recordOf<SMBIOSTable0Data>(Structure(0, 19).string(8, "2"));
    // What is missing reads as zero bytes, each 48 below the digit 0.
    tm day{};
    day.tm_year = 2000 - 48 * 111 - 1900;
    day.tm_mon = -48 * 11 - 1;
    day.tm_mday = -48 * 11;
    EXPECT_EQ(bios->getReleaseDateAsTimeT(), mktime(&day));
}

TEST(Uuid, isNullWhenAllZero)
{
    EXPECT_EQ(recordOf<SMBIOSTable1Data>(Structure(1, 25))->getUUIDAsString(), nullptr);
    EXPECT_STREQ(recordOf<SMBIOSTable1Data>(Structure(1, 25).byte(23, 0x0A))->getUUIDAsString(),
                 "0000000000000000000000000000000A");
}

TEST(ProcessorRecord, of22HasNoSerialNumberAndAssetTag)
{
    SMBIOSTable4Data processor(0x0202);
    processor.readBlock(Structure(4, 35).string(32, "S").string(33, "A").block().data(), 0);
    EXPECT_EQ(processor.getSerialNumber(), nullptr);
    EXPECT_EQ(processor.getAssetTag(), nullptr);
}

TEST(ProcessorRecord, voltageComesFromTheValueOrTheLegacyBits)
{
    const auto volts = [](unsigned byte) {
        return recordOf<SMBIOSTable4Data>(Structure(4, 35).byte(17, byte))->getVoltageInVolts();
    };
    EXPECT_DOUBLE_EQ(volts(0x8C), 1.2);
    EXPECT_DOUBLE_EQ(volts(0x02), 3.3);
    EXPECT_DOUBLE_EQ(volts(0x03), 5.0);
    EXPECT_DOUBLE_EQ(volts(0x04), 2.9);
    EXPECT_DOUBLE_EQ(volts(0x00), 0.0);
}

TEST(MemoryModuleRecord, sizesAreExponents)
{
    const auto size = [](unsigned byte) {
        return recordOf<SMBIOSTable6Data>(Structure(6, 12).byte(9, byte))->getInstalledSizeMB();
    };
    EXPECT_EQ(size(0x7F), -1);
    EXPECT_EQ(size(0x7D), -1);
    EXPECT_EQ(size(0xFE), -1);
    EXPECT_EQ(size(0x87), 128);
    EXPECT_EQ(size(0), 1);
    EXPECT_EQ(size(30), 1 << 30);
    EXPECT_EQ(size(32), 0);
    EXPECT_EQ(size(124), 0);
}

TEST(MemoryDeviceRecord, sizesAreInMegabytesOrKilobytes)
{
    const auto size = [](unsigned word) {
        return recordOf<SMBIOSTable17Data>(Structure(17, 27).word(12, word))->getSizeKB();
    };
    EXPECT_EQ(size(0x8200), 512);
    EXPECT_EQ(size(0x0200), 524288);
    EXPECT_EQ(size(0xFFFF), 0);
    EXPECT_EQ(size(0), 0);
    EXPECT_EQ(size(0x7FFF), 33553408);
}

TEST(Strings, emptySetIsOneEmptyString)
{
    const auto record = recordOf<SMBIOSTable2Data>(Structure(2, 8));
    EXPECT_EQ(record->getStringSetSize(), 2);
    EXPECT_STREQ(record->stringFromIndex(1), "");
    EXPECT_EQ(record->stringFromIndex(2), nullptr);
}

TEST(Strings, beyondTheFifteenthAreCountedAndDropped)
{
    Structure structure(2, 8);
    for (int i = 1; i <= 20; ++i)
        structure.addString("s" + std::to_string(i));
    SMBIOSTable2Data record(0x0203);
    EXPECT_EQ(record.readBlock(structure.block().data(), 0), static_cast<int>(structure.bytes().size()));
    EXPECT_STREQ(record.stringFromIndex(15), "s15");
    EXPECT_EQ(record.stringFromIndex(16), nullptr);
    EXPECT_EQ(record.stringFromIndex(0), nullptr);
    EXPECT_EQ(record.stringFromIndex(-1), nullptr);
    EXPECT_EQ(record.getStringSetSize(), 1 + 9 * 3 + 11 * 4);
}

TEST(Strings, areNoneBeforeReading)
{
    EXPECT_EQ(SMBIOSTable2Data(0x0203).stringFromIndex(1), nullptr);
}

// A formatted area of so many bytes and zeros behind it, with another byte at one place.
static std::vector<unsigned char> areaThenByteAt(unsigned char length, size_t place)
{
    std::vector<unsigned char> bytes(100);
    bytes[1] = length;
    bytes[place] = 7;
    bytes[99] = 7;
    return bytes;
}

TEST(MemoryControllerRecord, endsAtTheNextByteThatIsNotZero)
{
    EXPECT_EQ(SMBIOSTable5Data(0x0203).readBlock(areaThenByteAt(16, 21).data(), 0), 21);
    EXPECT_EQ(SMBIOSTable5Data(0x0203).readBlock(areaThenByteAt(16, 16).data(), 0), 16);
}

TEST(MemoryArrayRecord, endsBehindAtLeastOneByte)
{
    EXPECT_EQ(SMBIOSTable16Data(0x0203).readBlock(areaThenByteAt(15, 20).data(), 0), 20);
    EXPECT_EQ(SMBIOSTable16Data(0x0203).readBlock(areaThenByteAt(15, 15).data(), 0), 99);
    EXPECT_EQ(SMBIOSTable16Data(0x0203).readBlock(areaThenByteAt(15, 16).data(), 0), 16);
}
