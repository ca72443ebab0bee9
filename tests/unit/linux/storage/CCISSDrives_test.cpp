#include "linux/storage/CCISSDrives.h"

#include <gtest/gtest.h>

#include "tests/unit/LogCapture.h"

namespace
{

std::string diskOf(std::string line, std::string* disks)
{
    return takeMountedDisk(line.data(), disks) ? line.c_str() : "none";
}

} // namespace

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
