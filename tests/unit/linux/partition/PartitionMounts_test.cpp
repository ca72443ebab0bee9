#include "linux/partition/PartitionMounts.h"

#include <cstring>
#include <sys/statvfs.h>

#include "tests/unit/linux/partition/PartitionRowsFixture.h"

using PartitionMounts = PartitionRowsTest;

// A mount point that cannot be read, so that nothing depends on the machine at hand.
static constexpr char kNowhere[] = "/no/such/mount/point";

static void expectRow(VexTableRow& row, const std::vector<std::string>& values)
{
    std::vector<std::string> found;
    for (unsigned long id = PARTITION_INDEX; id <= PARTITION_FS_FREE_SIZE; ++id)
        found.push_back(valueText(row, id));
    EXPECT_EQ(found, values);
}

TEST_F(PartitionMounts, aRemoteFileSystemHidesItsDeviceNameButNotItsAccessPoint)
{
    doEntry("server:/export", "/mnt/x", "nfs");
    ASSERT_EQ(rows().size(), 1u);
    expectRow(*rows()[0], {"1", "2", "4", "remote", "0", "260", "server:/export", "/mnt/x", "0", "0"});
}

TEST_F(PartitionMounts, aLocalFileSystemKeepsItsDeviceName)
{
    doEntry("/dev/hda1", kNowhere, "ext3");
    doEntry("/dev/hda2", kNowhere, "minix");
    ASSERT_EQ(rows().size(), 2u);
    expectRow(*rows()[0], {"1", "1", "3", "/dev/hda1", "0", "131", "/dev/hda1", kNowhere, "0", "0"});
    expectRow(*rows()[1], {"2", "1", "0", "/dev/hda2", "0", "65535", "/dev/hda2", kNowhere, "0", "0"});
}

TEST_F(PartitionMounts, aMountBelowProcIsSkippedAndATmpfsOnDevShmIsNot)
{
    doEntry("usbfs", "/proc/bus/usb", "usbfs");
    doEntry("none", "/no/such/dev/shm", "tmpfs");
    doEntry("none", "/no/such/x", "shm");
    ASSERT_EQ(rows().size(), 1u);
    expectRow(*rows()[0], {"1", "1", "3", "none", "0", "267", "none", "/no/such/dev/shm", "0", "0"});
}

TEST_F(PartitionMounts, sizesAreThoseOfTheMountPoint)
{
    struct statvfs status;
    ASSERT_EQ(statvfs("/", &status), 0);
    doEntry("/dev/root", "/", "ext2");
    const std::string total =
        std::to_string(kilobytesOfBlocks(status.f_blocks, static_cast<uint32_t>(status.f_frsize)));
    EXPECT_EQ(valueText(*rows()[0], PARTITION_PHYSICAL_SIZE), total);
    EXPECT_EQ(valueText(*rows()[0], PARTITION_FS_TOTAL_SIZE), total);
    EXPECT_NE(valueText(*rows()[0], PARTITION_FS_FREE_SIZE), "0");
}

TEST_F(PartitionMounts, namesLongerThan255BytesAreCut)
{
    const std::string device = "/dev/" + std::string(300, 'd');
    const std::string mountPoint = "/no/" + std::string(300, 'm');
    doEntry(device.c_str(), mountPoint.c_str(), "ext2");
    VexTableRow& row = *rows()[0];
    EXPECT_EQ(valueText(row, PARTITION_DEVICE_NAME), device.substr(0, 255));
    EXPECT_EQ(valueText(row, PARTITION_FS_ACCESS_POINT), device.substr(0, 255));
    EXPECT_EQ(valueText(row, PARTITION_FS_MOUNT_POINT), mountPoint.substr(0, 255));
}

TEST_F(PartitionMounts, aMountTableGivesARowForEachEntryThatStoresSomething)
{
    char text[] = "/dev/hda1 /no/such/root ext3 rw 0 0\n"
                  "proc /proc proc rw 0 0\n"
                  "\n"
                  "# a remark\n"
                  "/dev/hda2 /no/such/two\\040words vfat rw 0 0\n"
                  "server:/export /no/such/x nfs rw,addr=10.0.0.1 0 0\n";
    FILE* mountTable = fmemopen(text, strlen(text), "r");
    ASSERT_NE(mountTable, nullptr);
    addMountEntries(mountTable);
    fclose(mountTable);
    ASSERT_EQ(rows().size(), 3u);
    EXPECT_EQ(valueText(*rows()[1], PARTITION_FS_MOUNT_POINT), "/no/such/two words");
    EXPECT_EQ(valueText(*rows()[2], PARTITION_INDEX), "3");
}

TEST(KilobytesOfBlocks, countWholeAndLeftOverBlocks)
{
    EXPECT_EQ(kilobytesOfBlocks(0, 4096), 0u);
    EXPECT_EQ(kilobytesOfBlocks(1, 512), 0u);
    EXPECT_EQ(kilobytesOfBlocks(3, 512), 1u);
    EXPECT_EQ(kilobytesOfBlocks(1023, 4096), 4092u);
    EXPECT_EQ(kilobytesOfBlocks(1024, 4096), 4096u);
    EXPECT_EQ(kilobytesOfBlocks(1025, 4096), 4100u);
    EXPECT_EQ(kilobytesOfBlocks(66053021, 4096), 264212084u);
    EXPECT_EQ(kilobytesOfBlocks(UINT64_MAX, 0), 0u);
}

TEST(KilobytesOfBlocks, saturateFrom4TerabytesOn)
{
    EXPECT_EQ(kilobytesOfBlocks(0x3FFFFFFF, 4096), 0xFFFFFFFCu);                      // the last size that fits
    EXPECT_EQ(kilobytesOfBlocks(0xFFFFFFFF, 1024), 0xFFFFFFFFu);                      // its kilobytes are all ones
    EXPECT_EQ(kilobytesOfBlocks(uint64_t{0x55555555} * 1024 + 1023, 3), 0xFFFFFFFFu); // only the sum is too large
    EXPECT_EQ(kilobytesOfBlocks(0x1FFFFFFFF, 512), 0xFFFFFFFFu);
    EXPECT_EQ(kilobytesOfBlocks(0x40000000, 4096), 0xFFFFFFFFu); // 4 TB: the product alone would wrap to 0
    EXPECT_EQ(kilobytesOfBlocks(0x40000000 + 25600, 4096), 0xFFFFFFFFu);
    EXPECT_EQ(kilobytesOfBlocks(UINT64_C(1) << 40, 4096), 0xFFFFFFFFu);
    EXPECT_EQ(kilobytesOfBlocks(UINT64_MAX, 0xFFFFFFFF), 0xFFFFFFFFu);
}

TEST(KilobytesOfBlocks, theProductOfLeftOverBlocksHas32Bits)
{
    EXPECT_EQ(kilobytesOfBlocks(1023, 0x400000), 0xFFC00000u / 1024);
    EXPECT_EQ(kilobytesOfBlocks(513, 0x800000), 0x800000u / 1024); // 513 x 8 MB wraps to 8 MB
}
