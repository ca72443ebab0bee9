#include "linux/RAIDDrives.h"

#include <gtest/gtest.h>

#include "tests/unit/LogCapture.h"
#include "tests/unit/linux/TextOf.h"

namespace
{

int logicalDrivesOf(std::string text)
{
    TextStream status = textOf(text);
    return countLogicalDrives(status);
}

std::vector<RAIDInfo> recordsOf(std::string text)
{
    std::vector<RAIDInfo> records(static_cast<size_t>(logicalDrivesOf(text)));
    TextStream status = textOf(text);
    readCurrentStatus(status, records);
    return records;
}

std::string controllerOf(const std::string& line)
{
    return recordsOf(line + "/dev/rd/c0d0: RAID-5\n").at(0).controllerName;
}

std::string levelOf(const std::string& line)
{
    return recordsOf(line).at(0).level;
}

std::string diskOf(std::string line, std::string* disks)
{
    return takeMountedDisk(line.data(), disks) ? line.c_str() : "none";
}

using Sizes = std::vector<uint32_t>;

Sizes sizesOf(std::string text)
{
    TextStream status = textOf(text);
    return readSmartDiskSizes(status);
}

constexpr char kStatus[] = "***** DAC960 RAID Driver Version 2.4.9 *****\n"
                           "Configuring Mylex AcceleRAID 352 PCI RAID Controller\n"
                           "  Logical Drives:\n"
                           "    /dev/rd/c0d0: RAID-5, Online, 17928192 blocks, Write Thru\n"
                           "    /dev/rd/c0d1: RAID-1, Online, 8964096 blocks, Write Thru\n"
                           "  Rebuild in Progress: Logical Drive 0 (/dev/rd/c0d0) 10% completed\n";

} // namespace

TEST(DAC960Status, aLineInParenthesesIsNoDrive)
{
    const std::vector<RAIDInfo> records = recordsOf(kStatus);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].controllerName, "Mylex");
    EXPECT_EQ(records[0].level, "RAID-5");
    EXPECT_EQ(records[0].device, "/dev/rd/c0d0");
    EXPECT_EQ(records[1].controllerName, "Mylex");
    EXPECT_EQ(records[1].level, "RAID-1");
    EXPECT_EQ(records[1].device, "/dev/rd/c0d1");
}

TEST(DAC960Status, withoutDrivesCountsNone)
{
    EXPECT_EQ(logicalDrivesOf("Configuring Mylex DAC960PL PCI RAID Controller\n"), 0);
    EXPECT_EQ(logicalDrivesOf("\n"), 0);
}

TEST(DAC960Status, aControllerLineOfTwoWordsNamesNone)
{
    EXPECT_EQ(controllerOf("RAID Controller\n"), "");
    EXPECT_EQ(controllerOf("  RAID  Controller \n"), "");
    EXPECT_EQ(controllerOf("My RAID Controller\n"), "RAID");
    EXPECT_EQ(controllerOf("Configuring  Mylex RAID Controller\n"), "Mylex");
}

TEST(DAC960Status, onlyTheFirstControllerLineCounts)
{
    EXPECT_EQ(controllerOf("A First RAID Controller\nA Second RAID Controller\n"), "First");
    EXPECT_EQ(controllerOf("RAID Controller\nA Second RAID Controller\n"), "");
}

TEST(DAC960Status, aDriveBeforeTheControllerLineHasNoController)
{
    const std::vector<RAIDInfo> records =
        recordsOf("/dev/rd/c0d0: RAID-5,\nA Mylex RAID Controller\n/dev/rd/c0d1: RAID-1,\n");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].controllerName, "");
    EXPECT_EQ(records[1].controllerName, "Mylex");
}

TEST(DAC960Status, theLevelEndsAtABlankACommaOrTheLinesEnd)
{
    EXPECT_EQ(levelOf("/dev/rd/c0d0: RAID-5, Online\n"), "RAID-5");
    EXPECT_EQ(levelOf("/dev/rd/c0d0: RAID-5 Online\n"), "RAID-5");
    EXPECT_EQ(levelOf("/dev/rd/c0d0: RAID-5\n"), "RAID-5");
    EXPECT_EQ(levelOf("/dev/rd/c0d0: RAID-5"), "RAID-5");
    EXPECT_EQ(levelOf("/dev/rd/c0d0:\n"), "");
}

TEST(DAC960Status, aLineWithoutColonIsAllDevice)
{
    const std::vector<RAIDInfo> records = recordsOf("see /dev/rd/c0d0\n");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].device, "/dev/rd/c0d0");
    EXPECT_EQ(records[0].level, "");
}

TEST(CCISSMounts, partitionsOfOneDiskAreOneDisk)
{
    const LogCapture log;
    std::string disks;
    EXPECT_EQ(diskOf("/dev/cciss/c0d0p1 on / type ext3 (rw)\n", &disks), "/dev/cciss/c0d0");
    EXPECT_EQ(diskOf("/dev/cciss/c0d0p2 on /usr type ext3 (rw)\n", &disks), "none");
    EXPECT_EQ(diskOf("/dev/cciss/c0d1p1 on /var type ext3 (rw)\n", &disks), "/dev/cciss/c0d1");
    EXPECT_EQ(disks, "/dev/cciss/c0d0,/dev/cciss/c0d1");
    EXPECT_EQ(log.text(), "CCISS: = /dev/cciss/c0d0 is already added\n");
}

TEST(CCISSMounts, aDiskWhoseNameIsPartOfAnotherCountsAsAdded)
{
    std::string disks;
    EXPECT_EQ(diskOf("/dev/cciss/c0d10p1 on / type ext3 (rw)\n", &disks), "/dev/cciss/c0d10");
    EXPECT_EQ(diskOf("/dev/cciss/c0d1p1 on /usr type ext3 (rw)\n", &disks), "none");
}

TEST(CCISSMounts, aLineThatBeginsWithItsCutHasNoDisk)
{
    std::string disks;
    EXPECT_EQ(diskOf("proc on /cciss type proc (rw)\n", &disks), "none");
    EXPECT_EQ(disks, "");
}

TEST(CCISSMounts, aLineWithoutPartitionIsCutAtTheFirstLetterPAnywhere)
{
    std::string disks;
    EXPECT_EQ(diskOf("/dev/cciss/c0d0 on / type ext3 (rw)\n", &disks), "/dev/cciss/c0d0 on / ty");
    EXPECT_EQ(diskOf("cciss on /x\n", &disks), "cciss on /x\n");
}

TEST(SmartRAIDStatus, everyLineWithBlocksIsADisk)
{
    EXPECT_EQ(sizesOf("cciss0: Compaq\nc0d0: blksz=512 nr_blocks=1024\nc0d1: blksz=512 nr_blocks=2048\n"),
              (Sizes{512, 1024}));
    EXPECT_EQ(sizesOf("cciss0: Compaq\n"), Sizes{});
}

TEST(SmartRAIDStatus, theSizeIsBlockSizeTimesBlocksDividedFirst)
{
    const char* text = "cciss0: Compaq Smart Array 5i\n"
                       "cciss/c0d0: blksz=512 nr_blocks=71122560\n"
                       "cciss/c0d1: blksz=512 nr_blocks=2047\n";
    EXPECT_EQ(sizesOf(text), (Sizes{35560960, 512}));
}

TEST(SmartRAIDStatus, aLineWithoutItsFiguresHasNoSize)
{
    EXPECT_EQ(sizesOf("c0d0: nr_blocks\n"), Sizes{0});
    EXPECT_EQ(sizesOf("c0d0: nr_blocks=71122560\n"), Sizes{0});
    EXPECT_EQ(sizesOf("c0d0: blksz=512 nr_blocks\n"), Sizes{0});
    EXPECT_EQ(sizesOf("nr_blocks"), Sizes{0});
}

TEST(SmartRAIDStatus, theSizeWrapsAt32Bits)
{
    EXPECT_EQ(sizesOf("c0d0: blksz=1024 nr_blocks=4294967295\n"), Sizes{0xFFFFFC00});
    EXPECT_EQ(sizesOf("c0d0: blksz=4096 nr_blocks=4294967295\n"), Sizes{0xFFFFF000});
}
