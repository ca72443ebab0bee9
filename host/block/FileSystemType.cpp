#include "host/block/FileSystemType.h"

#include <algorithm>

#include "com/VexEnumValues.h"

namespace host
{
namespace
{
// clang-format off
constexpr FileSystemType kTypes[] = {
    {"ext2", PARTITION_FS_TYPE_LINUX_NATIVE, false},   {"ext3", PARTITION_FS_TYPE_LINUX_NATIVE, false},
    {"ext4", PARTITION_FS_TYPE_LINUX_NATIVE, false},   {"xfs", PARTITION_FS_TYPE_LINUX_NATIVE, false},
    {"btrfs", PARTITION_FS_TYPE_LINUX_NATIVE, false},  {"f2fs", PARTITION_FS_TYPE_LINUX_NATIVE, false},
    {"reiserfs", PARTITION_FS_TYPE_REISERFS, false},   {"jfs", PARTITION_FS_TYPE_JFS, false},
    {"vfat", PARTITION_FS_TYPE_FAT32, false},          {"msdos", PARTITION_FS_TYPE_FAT16, false},
    {"ntfs", PARTITION_FS_TYPE_NTFS, false},           {"ntfs3", PARTITION_FS_TYPE_NTFS, false},
    {"fuseblk", PARTITION_FS_TYPE_UNKNOWN, false},     {"exfat", PARTITION_FS_TYPE_NTFS, false},
    {"iso9660", PARTITION_FS_TYPE_CDROM, false},       {"udf", PARTITION_FS_TYPE_CDROM, false},
    {"ufs", PARTITION_FS_TYPE_UFS, false},             {"tmpfs", PARTITION_FS_TYPE_TMPFS, false},
    {"ramfs", PARTITION_FS_TYPE_TMPFS, false},         {"swap", PARTITION_FS_TYPE_LINUX_SWAP, false},
    {"nfs", PARTITION_FS_TYPE_NFS, true},              {"nfs4", PARTITION_FS_TYPE_NFS, true},
    {"afs", PARTITION_FS_TYPE_AFS, true},              {"cifs", PARTITION_FS_TYPE_SAMBA, true},
    {"smb3", PARTITION_FS_TYPE_SAMBA, true},           {"smbfs", PARTITION_FS_TYPE_SAMBA, true},
    {"ceph", PARTITION_FS_TYPE_UNKNOWN, true},         {"9p", PARTITION_FS_TYPE_UNKNOWN, true},
    {"virtiofs", PARTITION_FS_TYPE_UNKNOWN, true},     {"lustre", PARTITION_FS_TYPE_UNKNOWN, true},
    {"gfs2", PARTITION_FS_TYPE_UNKNOWN, true},         {"ocfs2", PARTITION_FS_TYPE_UNKNOWN, true},
    {"orangefs", PARTITION_FS_TYPE_UNKNOWN, true},     {"coda", PARTITION_FS_TYPE_UNKNOWN, true},
    {"ncpfs", PARTITION_FS_TYPE_UNKNOWN, true},        {"glusterfs", PARTITION_FS_TYPE_UNKNOWN, true},
};

constexpr std::string_view kPseudo[] = {
    "autofs",      "binder",      "binfmt_misc", "bpf",         "cgroup",   "cgroup2",    "configfs", "cpuset",
    "debugfs",     "devpts",      "devtmpfs",    "drm",         "efivarfs", "functionfs", "fusectl",  "hugetlbfs",
    "ipathfs",     "mqueue",      "nsfs",        "pipefs",      "proc",     "pstore",     "resctrl",  "rpc_pipefs",
    "securityfs",  "selinuxfs",   "smackfs",     "sockfs",      "sysfs",    "tracefs",    "usbfs",    "xenfs",
    "fuse.gvfsd-fuse", "fuse.portal", "fuse.lxcfs", "nfsd",
};
// clang-format on
} // namespace

FileSystemType fileSystemType(std::string_view name)
{
    for (const FileSystemType& type : kTypes)
        if (type.name == name)
            return type;
    // A program behind it may be anywhere and may hang: sshfs, rclone, s3fs ...
    return {name, PARTITION_FS_TYPE_UNKNOWN, name.starts_with("fuse.") || name == "fuse"};
}

bool isPseudo(std::string_view name)
{
    return std::find(std::begin(kPseudo), std::end(kPseudo), name) != std::end(kPseudo);
}
} // namespace host
