// The Partition group on machines that the test makes.

#include <gtest/gtest.h>
#include <sstream>

#include "FakeMachine.h"

static std::string partition(const ScanResult& result, size_t row)
{
    std::string text;
    for (const char* name : {"Index", "Type", "MediaType", "DeviceName", "PhysicalSize", "FSType", "FSAccessPoint",
                             "FSMountPoint", "FSTotalSize", "FSFreeSize"})
        text += (text.empty() ? "" : "|") + result.value("Partition", row, name);
    return text;
}

TEST(Partition, aMachineWithoutAMountTableHasNoPartitions)
{
    FakeMachine machine;
    machine.file("/proc/swaps", "Filename Type Size Used Priority\n/dev/hda2 partition 524280 0 -1\n");
    const ScanResult result = machine.scan();
    ASSERT_TRUE(result.ended()) << result.errors;
    EXPECT_TRUE(result.rows("Partition").empty());
    EXPECT_TRUE(result.logHas("\nBegin Group Partition Group getTable()\nEnd Group Partition Group getTable()"));
}

TEST(Partition, mountsComeBeforeSwapAreasUnderOneIndex)
{
    FakeMachine machine;
    machine.file("/etc/mtab", "/dev/hda1 / ext3 rw 0 0\nserver:/export /mnt/x nfs rw 0 0\n");
    machine.file("/proc/swaps", "Filename Type Size Used Priority\n/dev/hda2 partition 524280 0 -1\n");
    machine.conf("statvfs / blocks 2519857 bfree 1234567 bavail 1106553");
    const ScanResult result = machine.scan();
    ASSERT_TRUE(result.ended()) << result.errors;
    ASSERT_EQ(result.rows("Partition").size(), 3u);
    EXPECT_EQ(partition(result, 0), "1|Logical Drive|Local Disk|/dev/hda1|10079428|Linux native | Apple|/dev/hda1|/|"
                                    "10079428|4426212");
    EXPECT_EQ(partition(result, 1),
              "2|Remote Drive|Remote Drive|remote|0|network file system|server:/export|/mnt/x|0|0");
    EXPECT_EQ(partition(result, 2),
              "3|Logical Drive|Local Disk|/dev/hda2|524280|Linux Swap | Prime|/dev/hda2|swap|524280|524280");
    EXPECT_TRUE(result.logHas("\n..Adding swap partitions...\nFilename Type Size Used Priority\n/dev/hda2 partition "
                              "524280 0 -1\n   ... path: /dev/hda2  used: 0/524280\n"));
}

TEST(Partition, aSwapListingWithoutAHeaderIsSaidToHaveNone)
{
    FakeMachine machine;
    machine.file("/etc/mtab", "");
    machine.file("/proc/swaps", "");
    EXPECT_TRUE(machine.scan().logHas("\n..Adding swap partitions...\n\n! Unexpected end of file"));
    machine.file("/proc/swaps", "/dev/hda2 partition 524280 0 -1\n");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.logHas("\n/dev/hda2 partition 524280 0 -1\n\n! Unexpected file format"));
    EXPECT_TRUE(result.rows("Partition").empty());
}

TEST(Partition, fileSystemsFrom4TerabytesOnAreFull32BitNumbers)
{
    FakeMachine machine;
    machine.file("/etc/mtab", "/dev/a /a jfs rw 0 0\n/dev/b /b jfs rw 0 0\n");
    machine.conf("statvfs /a bsize 4096 blocks 0x3fffffff bfree 1");
    machine.conf("statvfs /b bsize 4096 blocks 0x40000000 bfree 0x100000000");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value("Partition", 0, "FSTotalSize"), "-4"); // the report writes 32-bit numbers as signed ones
    EXPECT_EQ(result.value("Partition", 0, "FSFreeSize"), "4");
    EXPECT_EQ(result.value("Partition", 1, "FSTotalSize"), "-1");
    EXPECT_EQ(result.value("Partition", 1, "FSFreeSize"), "-1");
    EXPECT_TRUE(result.logHas("\n    f_bsize : 4096  f_blocks : 1073741824\n    f_tot : 0  f_tot_modk : 0"
                              "\n    totalsize : 4294967295  freesize : 4294967295"));
}

// Every byte that 10,000 mounts add to the report and the log of a machine without any.
TEST(Partition, tenThousandMountsAreReported)
{
    constexpr int kMounts = 10000;
    std::ostringstream mounts;
    std::ostringstream sizes;
    std::ostringstream rows;
    std::ostringstream lines;
    for (int i = 1; i <= kMounts; ++i) {
        mounts << "/dev/mapper/volume" << i << " /srv/" << i << " ext3 rw 0 0\n";
        sizes << "statvfs /srv/" << i << " blocks " << i << " bavail " << i / 2 << "\n";
        const int total = i * 4;
        const int available = i / 2 * 4;
        rows << "\n\t<serviceData>\n\t\t<name>Partition</name>\n\t\t<value>\n\t\t\t<Partition version=\"1\">"
             << "\n\t\t\t\t<Index IsKey=\"1\">" << i << "</Index>"
             << "\n\t\t\t\t<Type>Logical Drive</Type>"
             << "\n\t\t\t\t<MediaType>Local Disk</MediaType>"
             << "\n\t\t\t\t<DeviceName>/dev/mapper/volume" << i << "</DeviceName>"
             << "\n\t\t\t\t<PhysicalSize>" << total << "</PhysicalSize>"
             << "\n\t\t\t\t<FSType>Linux native | Apple</FSType>"
             << "\n\t\t\t\t<FSAccessPoint IsKey=\"1\">/dev/mapper/volume" << i << "</FSAccessPoint>"
             << "\n\t\t\t\t<FSMountPoint IsKey=\"1\">/srv/" << i << "</FSMountPoint>"
             << "\n\t\t\t\t<FSTotalSize>" << total << "</FSTotalSize>"
             << "\n\t\t\t\t<FSFreeSize>" << available << "</FSFreeSize>"
             << "\n\t\t\t</Partition>\n\t\t</value>\n\t</serviceData>\n";
        lines << "\ndevname: [/dev/mapper/volume" << i << "]  mountname: [/srv/" << i << "]  fstype: [ext3] (131)"
              << "\n    f_bsize : 4096  f_blocks : " << i << "\n    f_tot : " << i / 1024 * 4096
              << "  f_tot_modk : " << i % 1024 * 4 << "\n    totalsize : " << total << "  freesize : " << available;
    }
    FakeMachine machine;
    machine.file("/etc/mtab", "");
    const ScanResult bare = machine.scan();
    machine.file("/etc/mtab", mounts.str());
    machine.conf(sizes.str());
    ScanOptions options;
    options.secondsAllowed = 120; // generous: under sanitizers, on a busy computer
    const ScanResult result = machine.scan(options);
    ASSERT_TRUE(result.ended()) << result.errors;
    EXPECT_TRUE(result.report == withInserted(bare.report, "\n\t<serviceData>\n\t\t<name>Lpar</name>", rows.str()));
    EXPECT_TRUE(result.log == withInserted(bare.log, "\n..Adding swap partitions...", lines.str()));
}
