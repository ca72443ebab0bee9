#include "host/block/MediaKind.h"

#include <gtest/gtest.h>

#include "com/VexEnumValues.h"
#include "host/Notes.h"
#include "host/Root.h"
#include "tests/unit/host/Tree.h"

using namespace host;

namespace
{
constexpr uint32_t kDvdRam = 0x19, kDvdR = 0x26, kDvdRom = 0x17, kCdRw = 0x22, kCdR = 0x14;
constexpr const char* kInfo = "CD-ROM information, Id: cdrom.c 3.20 2003/12/17\n\n"
                              "drive name:\t\tsr2\tsr1\tsr0\n"
                              "drive speed:\t\t24\t48\t0\n"
                              "Can close tray:\t\t1\t1\t1\n"
                              "Can write CD-R:\t\t1\t1\t0\n"
                              "Can write CD-RW:\t1\t1\t0\n"
                              "Can read DVD:\t\t1\t0\t1\n"
                              "Can write DVD-R:\t1\t0\t0\n"
                              "Can write DVD-RAM:\t0\t0\n";
} // namespace

TEST(OpticalKind, isTheBestThatADriveTakes)
{
    EXPECT_EQ(opticalKind(kInfo, "sr2"), kDvdR);
    EXPECT_EQ(opticalKind(kInfo, "sr1"), kCdRw);
    EXPECT_EQ(opticalKind(kInfo, "sr0"), kDvdRom);
    EXPECT_EQ(opticalKind("drive name: sr0\nCan write CD-R: 1\nCan write DVD-RAM: 1", "sr0"), kDvdRam);
    EXPECT_EQ(opticalKind("drive name: sr0\nCan write CD-R: 1", "sr0"), kCdR);
}

TEST(OpticalKind, isACdRomWhereNothingTells)
{
    for (const char* info : {"", "drive name:\n", "drive name: sr1\nCan read DVD: 1\n", "Can read DVD: 1\n",
                             "drive name: sr0\nCan read DVD: 0\n", "drive name: sr0\nCan read DVD:\n",
                             "drive name: sr0\nCan read DVD: 10\n"})
        EXPECT_EQ(opticalKind(info, "sr0"), static_cast<uint32_t>(STORAGE_TYPE_CD_ROM)) << info;
    EXPECT_EQ(opticalKind(kInfo, ""), static_cast<uint32_t>(STORAGE_TYPE_CD_ROM));
}

TEST(MediaKind, isByNameAndModel)
{
    const Tree tree;
    Notes notes;
    const Root root(tree.folder(), notes);
    tree.file("/proc/sys/dev/cdrom/info", kInfo);
    static const struct {
        const char *name, *model;
        uint32_t kind;
    } cases[] = {
        {"sda", "", STORAGE_TYPE_HARD_DISK},
        {"nvme0n1", "", STORAGE_TYPE_HARD_DISK},
        {"sr2", "", kDvdR},
        {"sr9", "", STORAGE_TYPE_CD_ROM},
        {"srv", "", STORAGE_TYPE_HARD_DISK},
        {"fd0", "", STORAGE_TYPE_FLOPPY},
        {"fd", "", STORAGE_TYPE_HARD_DISK},
        {"st0", "x", STORAGE_TYPE_TAPE_CARTRIDGE},
        {"st1", "ULTRIUM-TD8", 0x39},
        {"mmcblk0", "", 0x1F},
        {"", "", STORAGE_TYPE_HARD_DISK},
    };
    for (const auto& c : cases)
        EXPECT_EQ(mediaKind(root, c.name, c.model), c.kind) << c.name;
}

TEST(Makers, areKnownByModelsAndNumbers)
{
    EXPECT_EQ(makerOfModel("ST4000NM0035"), "Seagate");
    EXPECT_EQ(makerOfModel("WDC WD40EFRX"), "Western Digital");
    EXPECT_EQ(makerOfModel("Odd Disk 5"), "Odd");
    EXPECT_EQ(makerOfModel("Odd"), "");
    EXPECT_EQ(makerOfModel(""), "");
    EXPECT_EQ(makerOfCard("0x000003"), "SanDisk");
    for (const char* number : {"", "3", "0x", "0xzz", "0x1000000003"})
        EXPECT_EQ(makerOfCard(number), "") << number;
}
