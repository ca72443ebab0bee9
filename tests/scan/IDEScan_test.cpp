// The IDE probe in whole scans.

#include <gtest/gtest.h>

#include "FakeMachine.h"

namespace
{

constexpr char kFolder[] = "/proc/ide/ide0/hda";

FakeMachine withDevice(const std::string& media, const std::string& answers)
{
    FakeMachine machine;
    machine.file(std::string(kFolder) + "/media", media)
        .file(std::string(kFolder) + "/geometry", "physical 1/2/3\nlogical 1023/255/63\n")
        .file(std::string(kFolder) + "/capacity", "78165360\n")
        .file(std::string(kFolder) + "/model", "WDC WD400BB-00DEA0\n")
        .device("/dev/hda", answers);
    return machine;
}

std::string valueOf(FakeMachine machine, const char* name)
{
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.ended()) << result.errors;
    EXPECT_EQ(result.rows("Storage").size(), 1U);
    return result.value("Storage", 0, name);
}

} // namespace

TEST(IDEScan, anEmptyMediaFileTellsNoType)
{
    EXPECT_EQ(valueOf(withDevice("", ""), "Type"), "Unknown");
}

TEST(IDEScan, aDiskHasItsFigures)
{
    FakeMachine machine = withDevice("disk\n", "HDIO_GET_IDENTITY serial \"WD-1\"\nHDIO_DRIVE_CMD word 128 0x0003\n");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value("Storage", 0, "Type"), "Hard Disk");
    EXPECT_EQ(result.value("Storage", 0, "Manufacturer"), "WDC");
    EXPECT_EQ(result.value("Storage", 0, "Model"), "WD400BB-00DEA0");
    EXPECT_EQ(result.value("Storage", 0, "SerialNumber"), "WD-1                ");
    EXPECT_EQ(result.value("Storage", 0, "Cylinders"), "1023");
    EXPECT_EQ(result.value("Storage", 0, "Sectors"), "255");
    EXPECT_EQ(result.value("Storage", 0, "Heads"), "63");
    EXPECT_EQ(result.value("Storage", 0, "TotalSize"), "38166");
    EXPECT_EQ(result.value("Storage", 0, "ID"), "db4eda45d6fb7a589cd4970aa558b2f5"); // of 1023 255 63 39082680
    EXPECT_EQ(result.value("Storage", 0, "SecurityEnabled"), "Yes");
}

TEST(IDEScan, aCdRomHasAModelAndNoFigures)
{
    FakeMachine machine = withDevice("cdrom\n", "HDIO_GET_IDENTITY serial \"A1\"\nHDIO_DRIVE_CMD word 128 0x0003\n");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value("Storage", 0, "Type"), "CD-ROM");
    EXPECT_EQ(result.value("Storage", 0, "Model"), "WD400BB-00DEA0");
    EXPECT_EQ(result.value("Storage", 0, "SerialNumber"), "");
    EXPECT_EQ(result.value("Storage", 0, "SecurityEnabled"), "Unsupported");
    for (const char* name : {"Cylinders", "Sectors", "Heads", "TotalSize"})
        EXPECT_EQ(result.value("Storage", 0, name), "0") << name;
}

TEST(IDEScan, securityFollowsWord128OfAHardDiskAlone)
{
    EXPECT_EQ(valueOf(withDevice("disk\n", "HDIO_DRIVE_CMD word 128 0x0003\n"), "SecurityEnabled"), "Yes");
    EXPECT_EQ(valueOf(withDevice("disk\n", "HDIO_DRIVE_CMD word 128 0x0001\n"), "SecurityEnabled"), "No");
    EXPECT_EQ(valueOf(withDevice("disk\n", "HDIO_DRIVE_CMD word 128 0x0000\n"), "SecurityEnabled"), "Unsupported");
    EXPECT_EQ(valueOf(withDevice("disk\n", "HDIO_DRIVE_CMD error EIO\n"), "SecurityEnabled"), "Unsupported");
    EXPECT_EQ(valueOf(withDevice("tape\n", "HDIO_DRIVE_CMD word 128 0x0003\n"), "SecurityEnabled"), "Unsupported");
}

TEST(IDEScan, aDriveThatDoesNotIdentifyItselfHasNoSerialNumber)
{
    EXPECT_EQ(valueOf(withDevice("disk\n", "HDIO_GET_IDENTITY error EIO\n"), "SerialNumber"), "");
    EXPECT_EQ(valueOf(withDevice("disk\n", "open EACCES\n"), "SerialNumber"), "");
}

TEST(IDEScan, withoutALogicalLineTheDriveTellsItsGeometry)
{
    for (const char* geometry : {"physical 1/2/3\n", "logical 1023/255\n"}) {
        FakeMachine machine = withDevice("disk\n", "HDIO_GETGEO heads 16 sectors 63 cylinders 65535\n");
        machine.file(std::string(kFolder) + "/geometry", geometry);
        const ScanResult result = machine.scan();
        EXPECT_EQ(result.value("Storage", 0, "Cylinders"), "65535");
        EXPECT_EQ(result.value("Storage", 0, "Sectors"), "63");
        EXPECT_EQ(result.value("Storage", 0, "Heads"), "16");
    }
}

TEST(IDEScan, withoutAnyGeometryTheFiguresAreZero)
{
    FakeMachine machine = withDevice("disk\n", "HDIO_GETGEO error EINVAL\n");
    machine.without(std::string(kFolder) + "/geometry");
    EXPECT_EQ(valueOf(std::move(machine), "Cylinders"), "0");
}

TEST(IDEScan, aFolderWithoutKnownFilesIsADeviceOfUnknownType)
{
    FakeMachine machine;
    machine.file("/proc/ide/ide0/hda/settings", "");
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 1U);
    EXPECT_EQ(result.value("Storage", 0, "Type"), "Unknown");
    EXPECT_EQ(result.value("Storage", 0, "Model"), "");
    EXPECT_EQ(result.value("Storage", 0, "ID"), "4a7d1ed414474e4033ac29ccb8653d9b"); // of four zeros
}

TEST(IDEScan, theDirectoriesOfControllersAloneHoldDevices)
{
    FakeMachine machine;
    machine.file("/proc/ide/drivers", "ide-disk\n")
        .file("/proc/ide/ide0/model", "pci\n")
        .file("/proc/ide/other/hdx/settings", "")
        .file("/proc/ide/ide0/hda/settings", "")
        .file("/proc/ide/ide1/hdc/settings", "");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.rows("Storage").size(), 2U);
}

TEST(IDEScan, onlyTheFirstEightDevicesInTheDirectorysOrderAreReported)
{
    FakeMachine machine;
    std::string order = "order /proc/ide/ide0";
    for (char letter = 'i'; letter >= 'a'; --letter) {
        const std::string name = std::string("hd") + letter;
        machine.file("/proc/ide/ide0/" + name + "/model", name + "\n");
        order += " " + name;
    }
    machine.conf(order).file("/proc/ide/ide1/hdz/settings", "");
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 8U);
    EXPECT_EQ(result.value("Storage", 0, "Model"), "hdi");
    EXPECT_EQ(result.value("Storage", 7, "Model"), "hdb");
}
