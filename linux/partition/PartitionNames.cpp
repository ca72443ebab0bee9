#include "linux/partition/PartitionNames.h"
#include "linux/text/TextParse.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace
{

struct FileSystemName {
    const char* name;
    uint32_t code;
};

// clang-format off
// "minux" is spelled so: "minix" is not known and has no code.
constexpr FileSystemName kFileSystemNames[] = {
    { "minux",    PARTITION_FS_TYPE_LINUX_NATIVE },
    { "ext",      PARTITION_FS_TYPE_LINUX_NATIVE },
    { "ext2",     PARTITION_FS_TYPE_LINUX_NATIVE },
    { "ext3",     PARTITION_FS_TYPE_LINUX_NATIVE },
    { "xiafs",    PARTITION_FS_TYPE_LINUX_NATIVE },
    { "vxfs",     PARTITION_FS_TYPE_VERITAS },
    { "hpfs",     PARTITION_FS_TYPE_NTFS },
    { "s5",       PARTITION_FS_TYPE_SYSTEM_V },
    { "ufs",      PARTITION_FS_TYPE_UFS },
    { "swap",     PARTITION_FS_TYPE_LINUX_SWAP },
    { "msdos",    PARTITION_FS_TYPE_FAT16 },
    { "tmpfs",    PARTITION_FS_TYPE_TMPFS },
    { "subfs",    PARTITION_FS_TYPE_SUBMOUNT },
    { "smbfs",    PARTITION_FS_TYPE_SAMBA },
    { "nfs",      PARTITION_FS_TYPE_NFS },
    { "vfat",     PARTITION_FS_TYPE_FAT32 },
    { "ntfs",     PARTITION_FS_TYPE_NTFS },
    { "jfs",      PARTITION_FS_TYPE_JFS },
    { "afs",      PARTITION_FS_TYPE_AFS },
    { "iso9660",  PARTITION_FS_TYPE_CDROM },
    { "reiserfs", PARTITION_FS_TYPE_REISERFS },
};
static_assert(std::size(kFileSystemNames) == 21);

constexpr const char* kRemoteFileSystems[] = { "nfs", "afs", "smbfs" };

constexpr const char* kLocalFileSystems[] = {
    "s5", "vxfs", "memfs", "ufs", "bfs", "ext", "ext2", "ext3", "minux", "hpfs", "xiafs", "swap", "msdos", "vfat",
    "reiserfs", "jfs", "tmpfs", "subfs", "ntfs",
};
static_assert(std::size(kLocalFileSystems) == 19);
// clang-format on

// A mount entry is left out when this text stands anywhere in that field. A tmpfs on /dev/shm stays: "shm" is looked
// for in the type alone.
enum class Field { Device, MountPoint, Type };

struct SkipRule {
    Field field;
    const char* text;
};

constexpr SkipRule kSkipRules[] = {
    {Field::Device, "(pid"}, // an automounter's own entry
    {Field::MountPoint, "/dev/pts"}, {Field::Type, "devpts"}, {Field::MountPoint, "/proc"}, {Field::Type, "proc"},
    {Field::MountPoint, "/.amd"},    {Field::Type, "sysfs"},  {Field::Type, "rpc_pipefs"},  {Field::Type, "shm"},
};

template <size_t N>
bool isOneOf(const char* const (&names)[N], const char* name)
{
    return std::any_of(names, names + N, [name](const char* known) { return strcmp(known, name) == 0; });
}

} // namespace

uint32_t get_fstype_enum(const char* fsType)
{
    for (const FileSystemName& known : kFileSystemNames)
        if (strcmp(known.name, fsType) == 0)
            return known.code;
    return PARTITION_FS_TYPE_UNKNOWN;
}

int isRemote(const char* fsType)
{
    return isOneOf(kRemoteFileSystems, fsType) ? 1 : 0;
}

int ValidPartitionFileSys(const char* fsType)
{
    return isOneOf(kLocalFileSystems, fsType) ? 1 : 0;
}

uint32_t getMediaType(const char* fsType, const char* device)
{
    if (isRemote(fsType) != 0)
        return PARTITION_MEDIA_REMOTE_DRIVE;
    if (strcmp(fsType, "iso9660") == 0)
        return PARTITION_MEDIA_CDROM;
    if (contains(device, "/dev/fd") || contains(fsType, "subfs"))
        return PARTITION_MEDIA_REMOVABLE_DISK;
    return ValidPartitionFileSys(fsType) != 0 ? PARTITION_MEDIA_LOCAL_DISK : PARTITION_MEDIA_UNKNOWN;
}

bool isPseudoFileSystem(const char* device, const char* mountPoint, const char* fsType)
{
    const auto holds = [&](const SkipRule& rule) {
        const char* const text = rule.field == Field::Device       ? device
                                 : rule.field == Field::MountPoint ? mountPoint
                                                                   : fsType;
        return contains(text, rule.text);
    };
    return std::any_of(std::begin(kSkipRules), std::end(kSkipRules), holds);
}
