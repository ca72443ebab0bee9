#include "linux/storage/DAC960Drives.h"

#include <gtest/gtest.h>

#include "tests/unit/linux/text/TextOf.h"

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
