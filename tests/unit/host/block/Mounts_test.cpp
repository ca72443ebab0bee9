#include "host/block/Mounts.h"

#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"

using namespace host;

namespace
{
using Bits = std::vector<bool>;

Bits hidden(const char* text)
{
    return hiddenMounts(parseMounts(text));
}

// Values of a row that tell which mount it is of and whether its size was asked.
Rows pointsAndSizes(const Tree& tree)
{
    host::ScanOptions options;
    options.root = tree.folder();
    options.groups = {GROUP_PARTITION};
    report::Report report;
    std::string reason;
    if (!host::scan(options, report, reason))
        return {reason};
    Rows rows;
    for (const report::Row& row : report.groups.front().rows) {
        report::Row chosen;
        for (const char* name : {"FSAccessPoint", "FSMountPoint", "FSTypeName", "TotalBytes"})
            if (const report::Value* value = row.find(name))
                chosen.values.push_back(*value);
        rows.push_back(shown(chosen));
    }
    return rows;
}
} // namespace

TEST(Mounts, areLinesWithEscapesResolved)
{
    const std::vector<Mount> mounts = parseMounts(
        "36 35 98:0 /a\\040b /mnt/c\\011d rw,noatime master:1 shared:2 - ext3 /dev/root rw,errors=continue\n"
        "too short a line\n37 36 0:5 / /n rw - nfs4 server:/export rw\n");
    ASSERT_EQ(mounts.size(), 2u);
    EXPECT_EQ(mounts[0].id, "36");
    EXPECT_EQ(mounts[0].parent, "35");
    EXPECT_EQ(mounts[0].number, "98:0");
    EXPECT_EQ(mounts[0].root, "/a b");
    EXPECT_EQ(mounts[0].point, "/mnt/c\td");
    EXPECT_EQ(mounts[0].options, "rw,noatime");
    EXPECT_EQ(mounts[0].type, "ext3");
    EXPECT_EQ(mounts[0].source, "/dev/root");
    EXPECT_EQ(mounts[0].superOptions, "rw,errors=continue");
    EXPECT_EQ(mounts[1].source, "server:/export");
}

TEST(Mounts, areHiddenByWhatStandsOnTheirPoint)
{
    EXPECT_EQ(hidden("20 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                     "30 20 8:2 / /srv rw - ext4 /dev/sda2 rw\n"
                     "31 30 8:3 / /srv/in rw - ext4 /dev/sda3 rw\n"
                     "40 30 8:4 / /srv rw - ext4 /dev/sda4 rw\n"
                     "41 40 8:5 / /srv/in rw - ext4 /dev/sda5 rw\n"),
              (Bits{false, true, true, false, false}));
}

TEST(Mounts, areHiddenByWhatStandsOnAFolderAboveThem)
{
    EXPECT_EQ(hidden("20 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                     "30 20 8:2 / /srv/a/b rw - ext4 /dev/sda2 rw\n"
                     "31 30 8:3 / /srv/a/b rw - ext4 /dev/sda3 rw\n"
                     "40 20 8:4 / /srv rw - ext4 /dev/sda4 rw\n"
                     "41 40 8:5 / /srv/a/b rw - ext4 /dev/sda5 rw\n"
                     "50 20 8:6 / /srvold rw - ext4 /dev/sda6 rw\n"
                     "51 20 8:7 / /srv/made/up rw - ext4 /dev/sda7 rw\n"),
              (Bits{false, true, true, false, false, false, false}));
}

TEST(Mounts, thatStandOnEachOtherEndTheWalk)
{
    EXPECT_EQ(hidden("1 2 8:1 / /a rw - ext4 /dev/sda1 rw\n2 1 8:2 / /a rw - ext4 /dev/sda2 rw\n"
                     "3 3 8:3 / /b rw - ext4 /dev/sda3 rw\n4 3 8:4 / nowhere rw - ext4 /dev/sda4 rw\n"),
              (Bits{true, true, true, true}));
    EXPECT_TRUE(hidden("").empty());
}

// What the upper mount tells of itself is no fact of the lower one.
TEST(Mounts, thatAreHiddenHaveNoSizes)
{
    const Tree tree;
    tree.file("/proc/self/mountinfo", "20 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                                      "30 20 8:2 / /srv rw - ext4 /dev/sda2 rw\n"
                                      "40 30 0:40 / /srv rw - tmpfs tmpfs rw,size=1k\n"
                                      "41 40 0:41 / /srv rw - tmpfs tmpfs rw,size=2k\n");
    tree.file("/invhw-kernel.json", R"({"format": "invhw-kernel", "formatVersion": 1, "answers": {"fileSystemSize": {
        "/": {"totalBytes": 4096, "freeBytes": 0, "availableBytes": 0, "inodes": 1, "freeInodes": 0},
        "/srv": {"totalBytes": 8192, "freeBytes": 0, "availableBytes": 0, "inodes": 1, "freeInodes": 0}}}})");
    EXPECT_EQ(pointsAndSizes(tree), (Rows{"FSAccessPoint=/dev/sda1|FSMountPoint=/|FSTypeName=ext4|TotalBytes=4096",
                                          "FSAccessPoint=/dev/sda2|FSMountPoint=/srv|FSTypeName=ext4",
                                          "FSAccessPoint=tmpfs|FSMountPoint=/srv|FSTypeName=tmpfs|TotalBytes=8192"}));
}
