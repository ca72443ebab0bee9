// Whole scans of machines whose physical memory can be read: the anchors, the entry point and the three groups that the
// firmware fills.

#include <filesystem>
#include <gtest/gtest.h>

#include "FakeMachine.h"
#include "com/Owned.h"
#include "com/md5file.h"

static const std::string kEntry = "smbios-entry at 0xF0000 table 0xE0010 version 2.3 bcd 0x23\n";

// A table of these structures, and an entry point for it.
static ScanResult scanStructures(const std::string& structures, const std::string& entry = kEntry)
{
    return FakeMachine().memory("structures at 0xE0010\n" + structures + "struct type 127 { }\n" + entry).scan();
}

static const std::string kBios = "struct type 0 length 20 {\nbyte 1 byte 2 word 0xF000 byte 3 byte 15\n"
                                 "strings \"Vendor\" \"6.00\" \"07/15/2004\"\n}\n";
static const std::string kSystem = "struct type 1 length 25 {\nbyte 1 byte 2 byte 3 byte 4\n"
                                   "strings \"M\" \"P\" \"V\" \"S\"\n}\n";

static std::string digest(const char* text)
{
    return OwnedText(md5_checksum(text)).get();
}

TEST(FirmwareScan, segmentWithoutAnchorLeavesTheTableUnavailable)
{
    const ScanResult result = FakeMachine().memory("size 0x100000\n").scan();
    ASSERT_TRUE(result.ended()) << result.errors;
    EXPECT_TRUE(result.logHas("Begin Group SMBIOS getTable()\nReading F0000 segment.\nLooking for _DMI_ signature."
                              "\nEnd Group SMBIOS getTable()"));
    EXPECT_EQ(result.rows("SMBIOS").size(), 0u);
    EXPECT_EQ(result.rows("MemoryModules").size(), 0u);
    EXPECT_TRUE(result.logHas("Begin Group !!!LEGSMBIOS getTable()\nEnd Group SMBIOS getTable()"));
}

TEST(FirmwareScan, withoutMemoryTheTableIsUnavailable)
{
    const ScanResult result = FakeMachine().scan();
    ASSERT_TRUE(result.ended()) << result.errors;
    EXPECT_TRUE(result.logHas("\nReading F0000 segment.\nEnd Group SMBIOS getTable()"));
    EXPECT_TRUE(result.logHas("\nfind table entry point = -1\nCannot find table entry point\nEnd Group ComponentID"));
    EXPECT_EQ(result.value("ComponentID", 0, "SerialNumber"), "");
    EXPECT_EQ(result.value("ComponentID", 0, "Type"), "");
    EXPECT_FALSE(result.has("ComponentID", 0, "Manufacturer"));
    EXPECT_FALSE(result.has("ComponentID", 0, "Product"));
}

TEST(FirmwareScan, revisionComesFromTheBcdByteOrTheEntryPoint)
{
    EXPECT_TRUE(scanStructures(kBios).logHas("\nrevision=0203  maj=2 min=3"));
    EXPECT_TRUE(scanStructures(kBios, "smbios-entry at 0xF0000 table 0xE0010 version 2.4 bcd 0\n")
                    .logHas("\nrevision=0204  maj=2 min=4"));
}

TEST(FirmwareScan, anchorMayStandAtAnyByte)
{
    // The "_DMI_" part alone, at an odd address: 6 bytes on the length, then address, count and revision.
    const ScanResult result =
        FakeMachine()
            .memory("structures at 0xE0010\n" + kBios + "at 0xF1235\nbytes \"_DMI_\" 00 2E 00 10 00 0E 00 01 00 23\n")
            .scan();
    EXPECT_TRUE(result.logHas("\nFound _DMI_ at 000F:1235\ntablelen=46\ntableaddr=000E0010 seg=000E off=0010"
                              "\nnumTables=1\nrevision=0203  maj=2 min=3"
                              "\nGrabbing memory from absolute location 000E0010, length 46\n0000 00 14"));
    EXPECT_EQ(result.value("SMBIOS", 0, "BIOSVendor"), "Vendor");
    EXPECT_EQ(result.value("ComponentID", 0, "Type"), "") << "no \"_SM_\"";
}

TEST(FirmwareScan, anchorInTheSegmentsLastBytesReadsZeros)
{
    const ScanResult result = FakeMachine().memory("at 0xFFFFB\nbytes \"_DMI_\"\n").scan();
    EXPECT_TRUE(result.logHas("\nFound _DMI_ at 000F:FFFB\ntablelen=0\ntableaddr=00000000 seg=0000 off=0000"
                              "\nnumTables=0\nrevision=0000  maj=0 min=0"
                              "\nGrabbing memory from absolute location 00000000, length 0\nEnd Group"));
    EXPECT_TRUE(result.logHas("\nNumber of Table 4 = 0\nNumber of Table 4 Populated = 0\n"));
    EXPECT_EQ(result.value("SMBIOS", 0, "PowerOnPassword"), "Unknown");
}

TEST(FirmwareScan, manyFalseAnchorsAreTriedOneByOne)
{
    // Each names 65,535 bytes behind the end of memory.
    std::string memory = "structures at 0xE0010\n" + kBios + "struct type 127 { }\nat 0xF0000\n";
    for (int i = 0; i < 1000; ++i)
        memory += "bytes \"_DMI_\" 00 FF FF 00 00 FF 7F 01 00 23\n";
    const ScanResult result =
        FakeMachine().memory(memory + "smbios-entry at 0xFE000 table 0xE0010 version 2.3\n").scan();
    ASSERT_TRUE(result.ended());
    EXPECT_EQ(result.value("SMBIOS", 0, "BIOSVendor"), "Vendor");
    EXPECT_TRUE(result.logHas("\nFound _DMI_ at 000F:3A89\n"));
}

TEST(FirmwareScan, tableAboveTwoGigabytesIsRead)
{
    const ScanResult result = FakeMachine()
                                  .memory("structures at 0xFFF00000\n" + kBios + kSystem +
                                          "struct type 127 { }\nsmbios-entry at 0xF0000 table 0xFFF00000 version 2.3\n")
                                  .scan();
    EXPECT_EQ(result.value("SMBIOS", 0, "BIOSVendor"), "Vendor");
    EXPECT_EQ(result.value("ComponentID", 0, "Type"), "V");
}

TEST(SmbiosGroup, enclosureTypeLosesItsLockBitAndMustHaveAName)
{
    const auto enclosure = [](const std::string& type) {
        return scanStructures("struct type 3 length 13 {\nbyte 1 byte " + type + "\nstrings \"Maker\"\n}\n");
    };
    ScanResult result = enclosure("0x83");
    EXPECT_EQ(result.value("SMBIOS", 0, "EnclosureType"), "Desktop");
    EXPECT_EQ(result.value("SMBIOS", 0, "ID"), digest("Maker3|"));
    for (const char* type : {"0", "26", "0x80"}) {
        result = enclosure(type);
        EXPECT_FALSE(result.has("SMBIOS", 0, "EnclosureType"));
        EXPECT_EQ(result.value("SMBIOS", 0, "ID"), digest("Maker|"));
    }
}

TEST(SmbiosGroup, placeholderCountsAsAbsent)
{
    const ScanResult result = scanStructures("struct type 0 length 20 {\nbyte 1 byte 2 word 0 byte 0 byte 15\n"
                                             "strings \"Not Available\" \"6.00\"\n}\n");
    EXPECT_FALSE(result.has("SMBIOS", 0, "BIOSVendor"));
    EXPECT_EQ(result.value("SMBIOS", 0, "BIOSVersion"), "6.00");
    EXPECT_FALSE(result.has("SMBIOS", 0, "BIOSDate"));
    EXPECT_EQ(result.value("SMBIOS", 0, "ID"), digest("|6.001024K"));
    EXPECT_TRUE(result.logHas("\n  [ 1] -none-\n  [ 2] >6.00<\n  [ 3] -none-\n  [ 4] >1024K<"
                              "\n  MD5 PK input len: 10\n PowerOn PW: 3"));
}

TEST(SmbiosGroup, identityTextHasAllItsParts)
{
    const ScanResult result = scanStructures(
        kBios + kSystem +
        "struct type 2 length 8 {\nbyte 1 byte 0 byte 2 byte 3\nstrings \"B\" \"bv\" \"serial\"\n}\n" +
        "struct type 3 length 13 {\nbyte 1 byte 9 byte 2 byte 3 byte 4\nstrings \"E\" \"ev\" \"es\" \"tag\"\n}\n");
    EXPECT_EQ(result.value("SMBIOS", 0, "ID"), digest("Vendor6.001024KMPVB|bvE9ev"));
    EXPECT_EQ(result.value("SMBIOS", 0, "EnclosureAssetTag"), "tag");
}

TEST(SmbiosGroup, withoutAnyTextThereIsNoId)
{
    const ScanResult result = scanStructures("struct type 2 length 8 { }\n");
    EXPECT_EQ(result.rows("SMBIOS").size(), 1u);
    EXPECT_FALSE(result.has("SMBIOS", 0, "ID"));
    EXPECT_FALSE(result.logHas("MD5 PK input len"));
}

TEST(SmbiosGroup, powerOnPasswordComesFromTheTopBits)
{
    const auto password = [](const std::string& settings) {
        return scanStructures("struct type 24 length 5 {\nbyte " + settings + "\n}\n")
            .value("SMBIOS", 0, "PowerOnPassword");
    };
    EXPECT_EQ(password("0x40"), "Enabled");
    EXPECT_EQ(password("0x00"), "Disabled");
    EXPECT_EQ(password("0x3F"), "Disabled");
    EXPECT_EQ(password("0x80"), "Unsupported");
    EXPECT_EQ(password("0xFF"), "Unsupported");
}

static const std::string kMif = "Name = \"BIOS_DATE\"\n Value = ";

TEST(SmbiosGroup, mifTakesTheFirmwaresDate)
{
    const std::string memory = "structures at 0xE0010\n" + kBios + "struct type 127 { }\n" + kEntry;
    ScanResult result = FakeMachine().memory(memory).startFile("hwxbios.mif", kMif + "\"01/02/03\"\nEnd\n").scan();
    EXPECT_EQ(result.files["hwxbios.mif"], "Name = \"BIOS_DATE\"\n                Value = \"07/15/04\"\nEnd\n");
    EXPECT_TRUE(result.logHas("\n  Entering hwxbios_mif_rewrite.\n  Date is: 2004-07-15"
                              "\n  Replaced BIOS Date is: 07/15/04\n  Rewriting hwxbios.mif file."
                              "\n  Rewriting completed."));
    result = FakeMachine().memory(memory).startFile("hwxbios.mif", kMif + "\"07/15/04\"\nEnd\n").scan();
    EXPECT_EQ(result.files["hwxbios.mif"], kMif + "\"07/15/04\"\nEnd\n");
    EXPECT_TRUE(result.logHas("\n  Leaving hwxbios_mif_rewrite [hwxbios.mif not replaced]."));
    result = FakeMachine().memory(memory).scan();
    EXPECT_EQ(result.files.count("hwxbios.mif"), 0u);
    EXPECT_TRUE(result.logHas("\n  hwxbios.mif not found."));
}

TEST(SmbiosGroup, aMifThatMayNotBeWrittenStays)
{
    FakeMachine machine;
    machine.memory("structures at 0xE0010\n" + kBios + "struct type 127 { }\n" + kEntry);
    machine.conf("error access hwxbios.mif EACCES").startFile("hwxbios.mif", kMif + "\"01/02/03\"\nEnd\n");
    ScanResult result = machine.scan();
    EXPECT_EQ(result.files["hwxbios.mif"], kMif + "\"01/02/03\"\nEnd\n");
    EXPECT_EQ(result.files.size(), 2u) << "the log and the MIF, nothing left over";
    EXPECT_TRUE(result.logHas("\n  Rewriting hwxbios.mif file."
                              "\n  It is not possible to open hwxbios.mif to rewrite."));
}

TEST(SmbiosGroup, aFolderInTheMifsPlaceHasNoDateToReplace)
{
    FakeMachine machine;
    machine.memory("structures at 0xE0010\n" + kBios + "struct type 127 { }\n" + kEntry);
    std::filesystem::create_directory(machine.workingFolder() + "/hwxbios.mif");
    EXPECT_TRUE(machine.scan().logHas("\n  Date is: 2004-07-15"
                                      "\n  Leaving hwxbios_mif_rewrite [hwxbios.mif not replaced]."));
}

static std::string device(const std::string& fields, const std::string& strings)
{
    return "struct type 17 length 27 {\n" + fields + "\nstrings " + strings + "\n}\n";
}

TEST(MemoryModules, devicesGiveSizeSocketPackagingAndType)
{
    const ScanResult result = scanStructures(
        device("at 12 word 0x0200 byte 9 at 16 byte 1 byte 2 byte 15 word 0x0080", "\"DIMM0\" \"BANK0\"") +
        device("at 12 word 0 byte 3 at 16 byte 2 byte 1 byte 18 word 0x0080", "\"BANK0\" \"   \"") +
        device("at 12 word 0x8800 byte 2 at 16 byte 1 byte 0 byte 17 word 0x1FF8", "\"A\"") +
        device("at 12 word 0xFFFF byte 15 at 16 byte 0 byte 0 byte 2 word 0", "\"unused\"") +
        "struct type 6 length 12 {\nbyte 1\nstrings \"not shown\"\n}\n");
    ASSERT_EQ(result.rows("MemoryModules").size(), 4u);
    EXPECT_EQ(result.value("MemoryModules", 0, "Index"), "1");
    EXPECT_EQ(result.value("MemoryModules", 0, "ModuleSizeMB"), "512");
    EXPECT_EQ(result.value("MemoryModules", 0, "SocketName"), "DIMM0/BANK0");
    EXPECT_EQ(result.value("MemoryModules", 0, "Packaging"), "DIMM");
    EXPECT_EQ(result.value("MemoryModules", 0, "MemoryType"), "Synchronous SDRAM");
    EXPECT_EQ(result.value("MemoryModules", 1, "ModuleSizeMB"), "0");
    EXPECT_EQ(result.value("MemoryModules", 1, "SocketName"), "BANK0");
    EXPECT_EQ(result.value("MemoryModules", 1, "Packaging"), "SIMM");
    EXPECT_EQ(result.value("MemoryModules", 1, "MemoryType"), "Synchronous");
    EXPECT_EQ(result.value("MemoryModules", 2, "ModuleSizeMB"), "2");
    EXPECT_EQ(result.value("MemoryModules", 2, "Packaging"), "");
    EXPECT_EQ(result.value("MemoryModules", 3, "SocketName"), "");
    EXPECT_EQ(result.value("MemoryModules", 3, "Packaging"), "");
    EXPECT_EQ(result.value("MemoryModules", 3, "MemoryType"), "");
    EXPECT_TRUE(result.logHas("\n  SMBIOS Table 6 is available (1).\n  SMBIOS Table 17 is available (4)."));
    EXPECT_TRUE(result.logHas("type: [Fast-paged Static column Pseudo-static Rambus Synchronous CMOS EDO Window DRAM "
                              "Cache DRAM Non-volatile RDRAM]"));
}

TEST(MemoryModules, emptyDeviceLocatorLeavesTheBank)
{
    const ScanResult result = scanStructures(device("at 16 byte 0 byte 1", "\"BANK0\""));
    EXPECT_EQ(result.value("MemoryModules", 0, "SocketName"), "BANK0");
}

// The direct reading alone: physical memory can be mapped, reading it fails.
static ScanResult scanDirect(const std::string& system, const std::string& entry = kEntry)
{
    return FakeMachine()
        .memory("structures at 0xE0010\n" + system + "struct type 127 { }\n" + entry)
        .conf("error read /dev/mem EPERM")
        .conf("uname machine i686")
        .scan();
}

TEST(ComponentId, directReadingGivesWhatIsNotParsed)
{
    const ScanResult result =
        scanDirect("struct type 1 length 25 {\nbyte 1 byte 2 byte 3 byte 4\n"
                   "strings \"Maker\" \"Not Available\" \"V\" \"a serial number of more than thirty-one\"\n}\n");
    EXPECT_EQ(result.value("ComponentID", 0, "Manufacturer"), "Maker");
    EXPECT_EQ(result.value("ComponentID", 0, "Product"), "Not Available") << "the direct texts are not judged";
    EXPECT_EQ(result.value("ComponentID", 0, "SerialNumber"), "a serial number of more than th");
    EXPECT_FALSE(result.has("ComponentID", 0, "Version"));
    EXPECT_EQ(result.value("ComponentID", 0, "Type"), "V");
    EXPECT_TRUE(result.logHas("\nfind table entry point = 0\nFind table entry point"
                              "\nType retrieved for linux intel=V\nSMBIOS TABLE 1 IS NOT AVAILABLE!\n"
                              "\nSerialNumber retrieved for linux intel=a serial number of more than th"
                              "\nManufacturer retrieved for linux intel=Maker"
                              "\nProduct retrieved for linux intel=Not Available\nEnd Group ComponentID"));
}

TEST(ComponentId, directReadingWithoutStringsIsLinux)
{
    for (const char* system : {"struct type 1 length 25 { }\n", "struct type 0 length 20 { }\n"}) {
        const ScanResult result = scanDirect(system);
        EXPECT_EQ(result.value("ComponentID", 0, "Manufacturer"), "Linux");
        EXPECT_EQ(result.value("ComponentID", 0, "Product"), "Linux");
        EXPECT_EQ(result.value("ComponentID", 0, "SerialNumber"), "");
        EXPECT_EQ(result.value("ComponentID", 0, "Type"), "");
    }
}

TEST(ComponentId, emptyManufacturerStringIsAValueAndLeavesTheProductToTheMachine)
{
    // The first string is empty, which for a walk over strings is no end.
    const ScanResult result = scanDirect("struct type 1 length 8 {\nbyte 1\n}\n");
    EXPECT_EQ(result.value("ComponentID", 0, "Manufacturer"), "");
    EXPECT_EQ(result.value("ComponentID", 0, "Product"), "i686");
}

TEST(ComponentId, entryPointMustPassItsChecks)
{
    const std::string at = "smbios-entry at 0xF0000 table 0xE0010 ";
    EXPECT_EQ(scanDirect(kSystem, at + "version 2.3\n").value("ComponentID", 0, "Type"), "V");
    EXPECT_EQ(scanDirect(kSystem, at + "version 2.3 entry-length 0\n").value("ComponentID", 0, "Type"), "V")
        << "no bytes, no sum";
    EXPECT_EQ(scanDirect(kSystem, at + "version 3.0\n").value("ComponentID", 0, "Type"), "V");
    for (const char* fault : {"version 1.9\n", "version 2.3 checksum bad\n", "version 2.3 intermediate-checksum bad\n",
                              "version 2.3 anchor _SN_\n"}) {
        const ScanResult result = scanDirect(kSystem, at + fault);
        EXPECT_TRUE(result.logHas("\nfind table entry point = -1\nCannot find table entry point")) << fault;
        EXPECT_FALSE(result.has("ComponentID", 0, "Manufacturer")) << fault;
    }
}

TEST(ComponentId, onlyTheFirstEntryPointIsTried)
{
    const ScanResult result = scanDirect(kSystem, "smbios-entry at 0xF0000 table 0xE0010 version 2.3 checksum bad\n"
                                                  "smbios-entry at 0xF0100 table 0xE0010 version 2.3\n");
    EXPECT_TRUE(result.logHas("\nfind table entry point = -1"));
}

TEST(ComponentId, tableThatCannotBeMappedIsNoEntry)
{
    const ScanResult result =
        scanDirect(kSystem, "smbios-entry at 0xF0000 table 0x70000000 version 2.3 length 100 count 3\n");
    EXPECT_TRUE(result.logHas("\nfind table entry point = 0"));
    EXPECT_EQ(result.value("ComponentID", 0, "Manufacturer"), "Linux");
}

TEST(ComponentId, parsedRecordGivesProductWithMakerAndTheDirectVersionAsType)
{
    const ScanResult result = scanStructures("struct type 1 length 25 {\nbyte 1 byte 2 byte 3 byte 4\n"
                                             "strings \"M\" \"P\" \"a version of more than thirty-one\" \"S\"\n}\n");
    const ReportRow row = result.rows("ComponentID").at(0);
    ASSERT_EQ(row.values.size(), 5u);
    using Value = std::pair<std::string, std::string>;
    EXPECT_EQ(row.values[0], Value("Manufacturer", "M"));
    EXPECT_EQ(row.values[1], Value("Product", "M P"));
    EXPECT_EQ(row.values[2], Value("SerialNumber", "S"));
    EXPECT_EQ(row.values[3], Value("Version", "a version of more than thirty-one"));
    EXPECT_EQ(row.values[4], Value("Type", "a version of more than thirty-o"));
}

TEST(ComponentId, placeholderSerialNumberOfAParsedRecordGivesAnEmptyOne)
{
    const ScanResult result = scanStructures("struct type 1 length 25 {\nbyte 1 byte 0 byte 0 byte 2\n"
                                             "strings \"M\" \"Not Available\"\n}\n");
    EXPECT_EQ(result.value("ComponentID", 0, "SerialNumber"), "");
    EXPECT_EQ(result.value("ComponentID", 0, "Product"), "M") << "the maker's text, the structure has no product";
    EXPECT_TRUE(result.logHas("\nProduct retrieved for linux intel=M"));
    EXPECT_FALSE(result.logHas("SerialNumber retrieved"));
}
