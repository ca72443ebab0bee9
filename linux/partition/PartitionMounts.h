#pragma once

#include <cstdint>
#include <cstdio>

// The mounted file systems of the Partition group.

/// Adds a row for every entry of an open mount table that is more than a pseudo file system.
void addMountEntries(FILE* mountTable);

/// Adds the row of one mount entry, or skips the entry. Sizes are asked of the mount point; they stay 0 when it cannot
/// be read.
void doEntry(const char* device, const char* mountPoint, const char* fsType);

/// A number of blocks in kilobytes. Each of the two products that make it up is a 32-bit one; a size that does not fit
/// 32 bits, 4 TB and above, gives 0xFFFFFFFF.
uint32_t kilobytesOfBlocks(uint64_t blocks, uint32_t fragmentSize);
