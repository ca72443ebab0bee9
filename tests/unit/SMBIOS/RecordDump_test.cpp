// The whole text that every record writes for diagnosis: of a structure in which every field has a value of its own,
// and of a record that nothing was read into.

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

#include "SMBIOS/SMBIOSTable.h"
#include "tests/unit/Capture.h"
#include "tests/unit/SMBIOS/TableBuilder.h"

static constexpr int kRevision = 0x0203;

// A structure whose bytes hold their own offset and 0x40, but for the numbers of its strings: "text 4" is the one whose
// number stands at offset 4.
static Structure distinct(unsigned type, size_t length, std::initializer_list<size_t> stringOffsets)
{
    Structure structure(type, length);
    for (size_t offset = 4; offset < length; ++offset)
        structure.byte(offset, static_cast<unsigned>(0x40 + offset));
    for (const size_t offset : stringOffsets)
        structure.string(offset, "text " + std::to_string(offset));
    return structure;
}

template <class Record>
static std::string dumpOf(const Structure& structure)
{
    const std::vector<unsigned char> block = structure.block();
    Record record(kRevision);
    record.readBlock(block.data(), 0);
    return capturedOutput([&] { record.dump(); });
}

template <class Record>
static std::string dumpUnread()
{
    const Record record(kRevision);
    return capturedOutput([&] { record.dump(); });
}

static std::string header(const char* type, const char* length)
{
    return std::string("\n\nSMBIOS Header -----------------------------------------------------------\n   Type  : ") +
           type + "\n   Length: " + length;
}

static const std::string kUnread = header("0", "x0000");

TEST(RecordDump, bios)
{
    EXPECT_EQ(dumpOf<SMBIOSTable0Data>(distinct(0, 19, {4, 5, 8})), header("0", "x0013") + R"(
SMBIOS Table 0 Data - BIOS Information
   Vendor            : >text 4<
   Version           : >text 5<
   StartAddrSeg      : x4746
   ReleaseDate       : >text 8<
   ROMSize           : 4736Kb
   Characteristics   : x4D4C4B4A:51504F4E
   ExtensionByte1    : x52
      isISASupported          : No
      isMCASupported          : No
      isEISASupported         : Yes
      isPCISupported          : No
      isPCMCIASupported       : Yes
      isPnPSupported          : Yes
      isAPMSupported          : No
      isFlashableBIOS         : Yes
      isBIOSShadowing         : No
      isVLVESASupported       : No
      isESCDSupported         : Yes
      isCDBootSupported       : No
      isSelectableBoot        : No
      isBIOSROMSocketed       : No
      isPCCardBootable        : Yes
      isEnhancedDiskDrive     : Yes
      isACPISupported         : No
      isUSBLegacySupported    : Yes
      isAGPSupported          : No
      isI2OBootSupported      : No
      isLS120BootSupported    : Yes
      isATAPIZipBootSupported : No
      is1394BootSupported     : Yes
      isSmartBatteryBIOS      : No)");
}

TEST(RecordDump, system)
{
    EXPECT_EQ(dumpOf<SMBIOSTable1Data>(distinct(1, 25, {4, 5, 6, 7})), header("1", "x0019") + R"(
SMBIOS Table 1 Data - System Information (ComponentID)
   Manufacturer      : >text 4<
   Product           : >text 5<
   Version           : >text 6<
   Serial Number     : >text 7<
   UUID              : >48494A4B4C4D4E4F5051525354555657<
   Wake-up Type      : x58)");
}

TEST(RecordDump, board)
{
    EXPECT_EQ(dumpOf<SMBIOSTable2Data>(distinct(2, 8, {4, 5, 6, 7})), header("2", "x0008") + R"(
SMBIOS Table 2 Data - Base Board Information (Motherboard)
   Manufacturer      : >text 4<
   Product           : >text 5<
   Version           : >text 6<
   Serial Number     : >text 7<)");
}

TEST(RecordDump, enclosure)
{
    EXPECT_EQ(dumpOf<SMBIOSTable3Data>(distinct(3, 13, {4, 6, 7, 8})), header("3", "x000D") + R"(
SMBIOS Table 3 Data - System Enclosure Information (Chassis)
   Manufacturer      : >text 4<
   Type              : x45
   Version           : >text 6<
   Serial Number     : >text 7<
   Asset Tag         : >text 8<)");
}

TEST(RecordDump, processor)
{
    EXPECT_EQ(dumpOf<SMBIOSTable4Data>(distinct(4, 35, {4, 7, 16, 32, 33}).byte(17, 0x92)), header("4", "x0023") + R"(
SMBIOS Table 4 Data - Processor Information
   Socket            : >text 4<
   Type              : x45
   Family            : x46
   Manufacturer      : >text 7<
   CPUID             : x4B4A4948:4F4E4D4C (family 9 model 4 stepping 8)
   Version           : >text 16<
   Voltage           : x92 (1.8 V)
   External Clock    : x5352
   Max Speed         : x5554
   Current Speed     : x5756
   Status            : x58
   Upgrade           : x59
   Serial Number     : >text 32<
   Asset Tag         : >text 33<)");
}

TEST(RecordDump, memoryModule)
{
    EXPECT_EQ(dumpOf<SMBIOSTable6Data>(distinct(6, 12, {4}).byte(9, 0x87).byte(10, 0x05)), header("6", "x000C") + R"(
SMBIOS Table 6 Data - Memory Module Information
   Socket            : >text 4<
   Bank Connections  : x45
   Current Speed     : x46
   Memory Type       : x4847
   Installed Size    : x87 (128 MB)
   Enabled Size      : x05 (32 MB)
   Error Status      : x4B)");
}

TEST(RecordDump, portConnector)
{
    EXPECT_EQ(dumpOf<SMBIOSTable8Data>(distinct(8, 9, {4, 6})), header("8", "x0009") + R"(
SMBIOS Table 8 Data - Port Connector Information
   Internal Name     : >text 4<
   Internal Type     : x45
   External Name     : >text 6<
   External Type     : x47
   Port Type         : x48)");
}

TEST(RecordDump, slot)
{
    EXPECT_EQ(dumpOf<SMBIOSTable9Data>(distinct(9, 13, {4})), header("9", "x000D") + R"(
SMBIOS Table 9 Data - System Slots Information
   Designation       : >text 4<
   Type              : x45
   Data Bus Width    : x46
   Current Usage     : x47
   Length            : x48
   ID                : x4A49
   Characteristics 1 : x4B
   Characteristics 2 : x4C)");
}

TEST(RecordDump, onBoardDevice)
{
    EXPECT_EQ(dumpOf<SMBIOSTable10Data>(distinct(10, 6, {5})), header("10", "x0006") + R"(
SMBIOS Table 10 Data - On Board Devices Information
   Device Type       : x44
   Enabled           : No
   Description       : >text 5<)");
    EXPECT_EQ(dumpOf<SMBIOSTable10Data>(distinct(10, 6, {5}).byte(4, 0x83)), header("10", "x0006") + R"(
SMBIOS Table 10 Data - On Board Devices Information
   Device Type       : x83
   Enabled           : Yes
   Description       : >text 5<)");
}

TEST(RecordDump, oemStrings)
{
    const Structure three = Structure(11, 5).addString("one").addString("two").addString("three");
    const std::string title = header("11", "x0005") + "\nSMBIOS Table 11 Data - OEM Strings Information";
    // No more than are declared, and no more than there are.
    EXPECT_EQ(dumpOf<SMBIOSTable11Data>(Structure(three).byte(4, 2)), title + R"(
   Count             : x02
   String            : >one<
   String            : >two<)");
    EXPECT_EQ(dumpOf<SMBIOSTable11Data>(Structure(three).byte(4, 4)), title + R"(
   Count             : x04
   String            : >one<
   String            : >two<
   String            : >three<)");
}

TEST(RecordDump, memoryDevice)
{
    EXPECT_EQ(dumpOf<SMBIOSTable17Data>(distinct(17, 27, {16, 17, 23, 24, 25, 26}).word(12, 0x0102)),
              header("17", "x001B") + R"(
SMBIOS Table 17 Data - Memory Device Information
   Array Handle      : x4544
   Error Handle      : x4746
   Total Width       : x4948
   Data Width        : x4B4A
   Size              : x0102 (264192 KB)
   Form Factor       : x4E
   Device Set        : x4F
   Device Locator    : >text 16<
   Bank Locator      : >text 17<
   Memory Type       : x52
   Type Detail       : x5453
   Speed             : x5655
   Manufacturer      : >text 23<
   Serial Number     : >text 24<
   Asset Tag         : >text 25<
   Part Number       : >text 26<)");
}

TEST(RecordDump, battery)
{
    EXPECT_EQ(dumpOf<SMBIOSTable22Data>(distinct(22, 16, {4, 5, 6, 7, 8})), header("22", "x0010") + R"(
SMBIOS Table 22 Data - Portable Battery
   Location          : >text 4<
   Manufacturer      : >text 5<
   Manufacture Date  : >text 6<
   Serial Number     : >text 7<
   Device Name       : >text 8<)");
}

TEST(RecordDump, hardwareSecurity)
{
    EXPECT_EQ(dumpOf<SMBIOSTable24Data>(Structure(24, 5).byte(4, 0x9C)), header("24", "x0005") + R"(
SMBIOS Table 24 Data - Hardware Security Information
   Settings          : x9C)");
}

TEST(RecordDump, ofAMemoryControllerAndAnArrayIsNothing)
{
    EXPECT_EQ(dumpOf<SMBIOSTable5Data>(distinct(5, 16, {})), "");
    EXPECT_EQ(dumpOf<SMBIOSTable16Data>(distinct(16, 15, {})), "");
}

// Before a structure is read, numbers are 0 and texts missing.

TEST(UnreadRecord, biosIsZero)
{
    const std::string text = dumpUnread<SMBIOSTable0Data>();
    EXPECT_EQ(text.find(kUnread + R"(
SMBIOS Table 0 Data - BIOS Information
   Vendor            : >(null)<
   Version           : >(null)<
   StartAddrSeg      : x0000
   ReleaseDate       : >(null)<
   ROMSize           : 64Kb
   Characteristics   : x00000000:00000000
   ExtensionByte1    : x00
      isISASupported          : No)"),
              0u);
    EXPECT_EQ(text.find("Yes"), std::string::npos);
}

TEST(UnreadRecord, systemBoardAndEnclosureAreZero)
{
    EXPECT_EQ(dumpUnread<SMBIOSTable1Data>(), kUnread + R"(
SMBIOS Table 1 Data - System Information (ComponentID)
   Manufacturer      : >(null)<
   Product           : >(null)<
   Version           : >(null)<
   Serial Number     : >(null)<
   UUID              : >(null)<
   Wake-up Type      : x00)");
    EXPECT_EQ(dumpUnread<SMBIOSTable2Data>(), kUnread + R"(
SMBIOS Table 2 Data - Base Board Information (Motherboard)
   Manufacturer      : >(null)<
   Product           : >(null)<
   Version           : >(null)<
   Serial Number     : >(null)<)");
    EXPECT_EQ(dumpUnread<SMBIOSTable3Data>(), kUnread + R"(
SMBIOS Table 3 Data - System Enclosure Information (Chassis)
   Manufacturer      : >(null)<
   Type              : x00
   Version           : >(null)<
   Serial Number     : >(null)<
   Asset Tag         : >(null)<)");
}

TEST(UnreadRecord, processorIsZero)
{
    EXPECT_EQ(dumpUnread<SMBIOSTable4Data>(), kUnread + R"(
SMBIOS Table 4 Data - Processor Information
   Socket            : >(null)<
   Type              : x00
   Family            : x00
   Manufacturer      : >(null)<
   CPUID             : x00000000:00000000 (family 0 model 0 stepping 0)
   Version           : >(null)<
   Voltage           : x00 (0.0 V)
   External Clock    : x0000
   Max Speed         : x0000
   Current Speed     : x0000
   Status            : x00
   Upgrade           : x00
   Serial Number     : >(null)<
   Asset Tag         : >(null)<)");
}

TEST(UnreadRecord, memoryIsZero)
{
    EXPECT_EQ(dumpUnread<SMBIOSTable6Data>(), kUnread + R"(
SMBIOS Table 6 Data - Memory Module Information
   Socket            : >(null)<
   Bank Connections  : x00
   Current Speed     : x00
   Memory Type       : x0000
   Installed Size    : x00 (1 MB)
   Enabled Size      : x00 (1 MB)
   Error Status      : x00)");
    EXPECT_EQ(dumpUnread<SMBIOSTable17Data>(), kUnread + R"(
SMBIOS Table 17 Data - Memory Device Information
   Array Handle      : x0000
   Error Handle      : x0000
   Total Width       : x0000
   Data Width        : x0000
   Size              : x0000 (0 KB)
   Form Factor       : x00
   Device Set        : x00
   Device Locator    : >(null)<
   Bank Locator      : >(null)<
   Memory Type       : x00
   Type Detail       : x0000
   Speed             : x0000
   Manufacturer      : >(null)<
   Serial Number     : >(null)<
   Asset Tag         : >(null)<
   Part Number       : >(null)<)");
    EXPECT_EQ(SMBIOSTable5Data(kRevision).getMaximumMemoryModuleSize(), 0);
    EXPECT_EQ(SMBIOSTable5Data(kRevision).getNumAssocMemorySlots(), 0);
    EXPECT_EQ(SMBIOSTable16Data(kRevision).getMaxCapacity(), 0u);
    EXPECT_EQ(SMBIOSTable16Data(kRevision).getNumMemDevices(), 0);
}

TEST(UnreadRecord, connectorsSlotsAndDevicesAreZero)
{
    EXPECT_EQ(dumpUnread<SMBIOSTable8Data>(), kUnread + R"(
SMBIOS Table 8 Data - Port Connector Information
   Internal Name     : >(null)<
   Internal Type     : x00
   External Name     : >(null)<
   External Type     : x00
   Port Type         : x00)");
    EXPECT_EQ(dumpUnread<SMBIOSTable9Data>(), kUnread + R"(
SMBIOS Table 9 Data - System Slots Information
   Designation       : >(null)<
   Type              : x00
   Data Bus Width    : x00
   Current Usage     : x00
   Length            : x00
   ID                : x0000
   Characteristics 1 : x00
   Characteristics 2 : x00)");
    EXPECT_EQ(dumpUnread<SMBIOSTable10Data>(), kUnread + R"(
SMBIOS Table 10 Data - On Board Devices Information
   Device Type       : x00
   Enabled           : No
   Description       : >(null)<)");
    EXPECT_EQ(dumpUnread<SMBIOSTable11Data>(), kUnread + R"(
SMBIOS Table 11 Data - OEM Strings Information
   Count             : x00)");
}

TEST(UnreadRecord, batteryAndSecurityAreZero)
{
    EXPECT_EQ(dumpUnread<SMBIOSTable22Data>(), kUnread + R"(
SMBIOS Table 22 Data - Portable Battery
   Location          : >(null)<
   Manufacturer      : >(null)<
   Manufacture Date  : >(null)<
   Serial Number     : >(null)<
   Device Name       : >(null)<)");
    EXPECT_EQ(dumpUnread<SMBIOSTable24Data>(), kUnread + R"(
SMBIOS Table 24 Data - Hardware Security Information
   Settings          : x00)");
}

TEST(UnreadRecord, hasNoHeaderAndNoStrings)
{
    const SMBIOSTable2Data record(kRevision);
    EXPECT_EQ(record.hasData(), 0);
    EXPECT_EQ(record.getLength(), 0);
    EXPECT_EQ(record.getStringSetSize(), 0);
}
