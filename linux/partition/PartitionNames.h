#pragma once

#include <cstdint>

#include "com/VexEnumValues.h"

// What the name of a file system's type, and the device it is on, say about a mount entry.

/// The FS Type code of a type name; PARTITION_FS_TYPE_UNKNOWN when the name is not known.
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
