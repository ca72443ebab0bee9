#include "linux/partition/PartitionNames.h"

#include <gtest/gtest.h>

TEST(PartitionNames, everyKnownFileSystemHasItsCode)
{
    static constexpr struct {
        const char* name;
        uint32_t code;
    } kCases[] = {
        {"minux", 0x83},  {"ext", 0x83},      {"ext2", 0x83},      {"ext3", 0x83}, {"xiafs", 0x83}, {"vxfs", 0x42},
        {"hpfs", 0x07},   {"s5", 0x63},       {"ufs", 0x106},      {"swap", 0x82}, {"msdos", 0x0E}, {"tmpfs", 0x10B},
        {"subfs", 0x119}, {"smbfs", 0x11A},   {"nfs", 0x104},      {"vfat", 0x0B}, {"ntfs", 0x07},  {"jfs", 0x102},
        {"afs", 0x105},   {"iso9660", 0x108}, {"reiserfs", 0x118},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(get_fstype_enum(c.name), c.code) << c.name;
}

TEST(PartitionNames, namesAreComparedWholeAndMinixIsNotMinux)
{
    for (const char* name : {"minix", "ext4", "nfs4", "EXT2", "ext2 ", "", "memfs", "bfs"})
        EXPECT_EQ(get_fstype_enum(name), 0xFFFFu) << name;
}

TEST(PartitionNames, onlyThreeExactNamesAreRemote)
{
    for (const char* name : {"nfs", "afs", "smbfs"})
        EXPECT_EQ(isRemote(name), 1) << name;
    for (const char* name : {"nfs4", "cifs", "nfsd", "coda", ""})
        EXPECT_EQ(isRemote(name), 0) << name;
}

TEST(PartitionNames, thereAreNineteenLocalFileSystems)
{
    for (const char* name : {"s5", "vxfs", "memfs", "ufs", "bfs", "ext", "ext2", "ext3", "minux", "hpfs", "xiafs",
                             "swap", "msdos", "vfat", "reiserfs", "jfs", "tmpfs", "subfs", "ntfs"})
        EXPECT_EQ(ValidPartitionFileSys(name), 1) << name;
    for (const char* name : {"minix", "ext4", "nfs", "iso9660", "afs", "xfs", ""})
        EXPECT_EQ(ValidPartitionFileSys(name), 0) << name;
}

TEST(PartitionNames, theFirstRuleThatHoldsGivesTheMediaType)
{
    static constexpr struct {
        const char* type;
        const char* device;
        uint32_t mediaType;
    } kCases[] = {
        {"nfs", "/dev/fd0", 4},        // remote comes before all
        {"iso9660", "/dev/fd0", 5},    // then CD-ROM
        {"ext2", "/dev/fd0", 2},       // then a floppy
        {"weird", "/dev/fd1u1440", 2}, //
        {"subfs", "/dev/hdc", 2},      // then a type with "subfs" in it, although it is in the local list
        {"mysubfs2", "/dev/hdc", 2},   //
        {"tmpfs", "none", 3},          // then the local list
        {"ext3", "/dev/hda1", 3},      //
        {"minix", "/dev/hda1", 0},     // then nothing is known
        {"ext4", "/dev/hda1", 0},      //
        {"nfs4", "server:/export", 0}, //
    };
    for (const auto& c : kCases)
        EXPECT_EQ(getMediaType(c.type, c.device), c.mediaType) << c.type << " on " << c.device;
}

TEST(PartitionNames, pseudoFileSystemsAreToldBySubstrings)
{
    static constexpr struct {
        const char* device;
        const char* mountPoint;
        const char* type;
        bool pseudo;
    } kCases[] = {
        {"automount(pid812)", "/home", "autofs", true},
        {"none", "/dev/pts", "anything", true},
        {"none", "/jail/dev/pts", "anything", true},
        {"none", "/x", "devpts", true},
        {"usbdevfs", "/proc/bus/usb", "usbdevfs", true},
        {"/dev/hda9", "/processes", "ext3", true}, // nothing need follow "/proc"
        {"/dev/hda9", "/srv/myproc", "ext3", false},
        {"none", "/x", "proc", true},
        {"none", "/x", "binfmt_proc", true},
        {"amd", "/.amd", "ext2", true},
        {"sysfs", "/sys", "sysfs", true},
        {"sunrpc", "/var/lib/nfs", "rpc_pipefs", true},
        {"none", "/x", "shm", true},
        {"none", "/dev/shm", "tmpfs", false}, // "shm" is looked for in the type alone
        {"/proc", "/x", "ext2", false},
        {"none", "/x", "(pid", false},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(isPseudoFileSystem(c.device, c.mountPoint, c.type), c.pseudo) << c.mountPoint << ' ' << c.type;
}
