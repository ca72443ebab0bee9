#pragma once

#include <cstdint>

// What the name of a file system's type, and the device it is on, say about a mount entry.

/// Codes of attribute "Type" (PART_TYPE_ENUM_DEF) that are reported.
enum PartitionType : uint32_t {
    PART_TYPE_LOGICAL_DRIVE = 1,
    PART_TYPE_REMOTE_DRIVE = 2,
};

/// Codes of attribute "Media Type" (PART_MEDIA_TYPE_ENUM_DEF) that are reported.
enum PartitionMediaType : uint32_t {
    PART_MEDIA_UNKNOWN = 0,
    PART_MEDIA_REMOVABLE_DISK = 2,
    PART_MEDIA_LOCAL_DISK = 3,
    PART_MEDIA_REMOTE_DRIVE = 4,
    PART_MEDIA_CDROM = 5,
};

/// Codes of attribute "FS Type" (FILE_SYSTEM_TYPE_ENUM_DEF) that the code itself names.
constexpr uint32_t FS_TYPE_LINUX_SWAP = 0x82;
constexpr uint32_t FS_TYPE_UNKNOWN = 0xFFFF;

/// The FS Type code of a type name; FS_TYPE_UNKNOWN when the name is not known.
uint32_t get_fstype_enum(const char* fsType);

/// 1 when the type is exactly one of the network file systems "nfs", "afs" and "smbfs", else 0: nfs4, cifs and the like
/// count as local.
int isRemote(const char* fsType);

/// 1 when the type is one of the local file systems, else 0.
int ValidPartitionFileSys(const char* fsType);

/// The Media Type code of a mount entry.
uint32_t getMediaType(const char* fsType, const char* device);

/// True for what the kernel or an automounter lists as mounted though it stores nothing.
bool isPseudoFileSystem(const char* device, const char* mountPoint, const char* fsType);
