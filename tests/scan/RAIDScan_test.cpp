// The probes for drives behind RAID controllers in whole scans.

#include <gtest/gtest.h>

#include "FakeMachine.h"

namespace
{

constexpr char kDAC960Status[] = "/proc/rd/c0/current_status";
constexpr char kSmartStatus[] = "/proc/driver/cciss/cciss0";
constexpr char kSmartDisk[] = "cciss/c0d0: blksz=512 nr_blocks=71122560\n";
constexpr char kGeometry[] = "255 heads, 63 sectors/track, 4427 cylinders\n";

} // namespace

TEST(DAC960Scan, aDriveThatFdiskDoesNotKnowRepeatsTheOneBefore)
{
    FakeMachine machine;
    machine
        .file(kDAC960Status, "A Mylex RAID Controller\n/dev/rd/c0d0: RAID-5,\n/dev/rd/c0d1: RAID-1,\n"
                             "/dev/rd/c0d2: JBOD,\n")
        .command("/sbin/fdisk -l", "Disk /dev/rd/c0d1: 255 heads, 63 sectors, 261 cylinders\n");
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 3U);
    const char* cylinders[] = {"0", "261", "261"};
    const char* sizes[] = {"0", "2047", "2047"};
    for (size_t row = 0; row < 3; ++row) {
        EXPECT_EQ(result.value("Storage", row, "Cylinders"), cylinders[row]);
        EXPECT_EQ(result.value("Storage", row, "TotalSize"), sizes[row]);
        EXPECT_EQ(result.value("Storage", row, "SerialNumber"), "+");
        EXPECT_EQ(result.value("Storage", row, "Manufacturer"), "Mylex");
    }
}

TEST(DAC960Scan, aStatusFileWithoutDrivesIsLogged)
{
    FakeMachine machine;
    machine.file(kDAC960Status, "A Mylex RAID Controller\n");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.rows("Storage").empty());
    EXPECT_TRUE(result.logHas("call gatherDAC960RAIDDriveInformation()\n no logical drives associated to RAID \n"));
}

TEST(CCISSScan, disksOfEqualGeometryDifferInTheirIds)
{
    FakeMachine machine;
    machine
        .command("/bin/mount", "/dev/cciss/c0d0p1 on / type ext3 (rw)\n/dev/cciss/c0d0p2 on /usr type ext3 (rw)\n"
                               "/dev/cciss/c0d1p1 on /home type ext3 (rw)\n")
        .command("/sbin/fdisk -l /dev/cciss/c0d0 2>/dev/null", kGeometry)
        .command("/sbin/fdisk -l /dev/cciss/c0d1 2>/dev/null", kGeometry);
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 2U);
    for (size_t row = 0; row < 2; ++row)
        EXPECT_EQ(result.value("Storage", row, "Cylinders"), "4427");
    EXPECT_EQ(result.value("Storage", 0, "ID"), "152b21f658b9bbeae80c79718b4a5d68"); // of 4427 63 255 2005445 and "0"
    EXPECT_EQ(result.value("Storage", 1, "ID"), "345d72d43b2d0416c4842b36d19351fc"); // and "1"
}

TEST(CCISSScan, aDiskThatFdiskSaysNothingAboutRepeatsTheOneBefore)
{
    FakeMachine machine;
    machine.command("/bin/mount", "/dev/cciss/c0d0p1 on / type ext3 (rw)\n/dev/cciss/c0d1p1 on /home type ext3 (rw)\n")
        .command("/sbin/fdisk -l /dev/cciss/c0d0 2>/dev/null", kGeometry);
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 2U);
    EXPECT_EQ(result.value("Storage", 1, "Cylinders"), "4427");
    EXPECT_TRUE(result.logHas("\nfdisk command =/sbin/fdisk -l /dev/cciss/c0d1 2>/dev/null\n"
                              "\nrunning /sbin/fdisk -l /dev/...\nCCISS: getFromFdiskMount returned 0"
                              "\nCCISS: Add SCSI index=>1< type=>30< model=>Compaq Smart Array 5i Controller< "
                              "manufac=>Compaq< serial=>+< cyl=>4427<"));
}

TEST(CCISSScan, aMountSourceIsNoShellCommand)
{
    FakeMachine machine;
    machine.command("/bin/mount", "/dev/cciss;touch x on /mnt type ext3 (rw)\n");
    ScanOptions options;
    options.countFile = machine.folder() + "/calls";
    const ScanResult result = machine.scan(options);
    EXPECT_EQ(result.rows("Storage").size(), 1U);
    EXPECT_TRUE(result.logHas("CCISS: getFromFdiskMount returned 0"));
    EXPECT_EQ(readTextFile(options.countFile).find("touch"), std::string::npos);
}

TEST(SmartRAIDScan, isNotReadWhereMountsCanBeListed)
{
    FakeMachine machine;
    machine.file(kSmartStatus, kSmartDisk).command("/bin/mount", "/dev/hda1 on / type ext3 (rw)\n");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.rows("Storage").empty());
    EXPECT_FALSE(result.logHas("gatherCompaqSmartRAIDDriveInformation"));
}

TEST(SmartRAIDScan, isReadWhereMountsCannotBeListed)
{
    for (const bool fails : {false, true}) {
        FakeMachine machine;
        machine.file(kSmartStatus, kSmartDisk);
        if (fails)
            machine.commandFails("/bin/mount");
        else
            machine.command("/bin/mount", "");
        const ScanResult result = machine.scan();
        ASSERT_EQ(result.rows("Storage").size(), 1U);
        EXPECT_EQ(result.value("Storage", 0, "TotalSize"), "34727");
        EXPECT_EQ(result.value("Storage", 0, "ID"), "b25024621495ee53244c63871bb0bcf7"); // of 0 0 0 35560960 1
    }
}

TEST(SmartRAIDScan, aStatusFileThatIsMissingOrWithoutDisksIsLogged)
{
    FakeMachine missing;
    EXPECT_TRUE(missing.scan().logHas("\nfopen(cat /proc/driver/cciss/cciss0) failed\n"));
    FakeMachine empty;
    empty.file(kSmartStatus, "cciss0: Compaq\n");
    EXPECT_TRUE(empty.scan().logHas("\n no disk associated to Compaq Smart RAID \n"));
}
