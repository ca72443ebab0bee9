#include "linux/PartitionNames.h"

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
    { "minux",    0x83 },
    { "ext",      0x83 },
    { "ext2",     0x83 },
    { "ext3",     0x83 },
    { "xiafs",    0x83 },
    { "vxfs",     0x42 },
    { "hpfs",     0x07 },
    { "s5",       0x63 },
    { "ufs",      0x106 },
    { "swap",     FS_TYPE_LINUX_SWAP },
    { "msdos",    0x0E },
    { "tmpfs",    0x10B },
    { "subfs",    0x119 },
    { "smbfs",    0x11A },
    { "nfs",      0x104 },
    { "vfat",     0x0B },
    { "ntfs",     0x07 },
    { "jfs",      0x102 },
    { "afs",      0x105 },
    { "iso9660",  0x108 },
    { "reiserfs", 0x118 },
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

bool contains(const char* text, const char* part)
{
    return strstr(text, part) != nullptr;
}

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
    return FS_TYPE_UNKNOWN;
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
        return PART_MEDIA_REMOTE_DRIVE;
    if (strcmp(fsType, "iso9660") == 0)
        return PART_MEDIA_CDROM;
    if (contains(device, "/dev/fd") || contains(fsType, "subfs"))
        return PART_MEDIA_REMOVABLE_DISK;
    return ValidPartitionFileSys(fsType) != 0 ? PART_MEDIA_LOCAL_DISK : PART_MEDIA_UNKNOWN;
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
