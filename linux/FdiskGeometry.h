#pragma once

#include <cstdint>

class TextStream;

// The geometry of disks behind RAID controllers, which is asked of nobody but fdisk.

struct DiskGeometry {
    uint32_t heads = 0;
    uint32_t cylinders = 0;
    uint32_t sectors = 0;   // per track
    uint32_t kilobytes = 0; // the product of the three, of which 32 bits are kept while it still counts bytes
};

/// Looks a disk up in fdisk's listing of all disks; a generic node (/dev/sgX) is looked up as its disk (/dev/sdX).
/// Returns 1 and the geometry, or 0 and leaves geometry alone.
int getFromFdisk(const char* device, DiskGeometry* geometry);

/// Asks fdisk for one disk, with the same result. device comes from the mount listing and becomes part of a shell
/// command: a name with a character that a shell could take for more than itself is not asked for.
int getFromFdiskMount(const char* device, DiskGeometry* geometry);

/// The two lookups in text that fdisk wrote: the line that names the disk, and the line that counts its heads.
int findListedGeometry(TextStream& listing, const char* device, DiskGeometry* geometry);
int findMountedGeometry(TextStream& listing, DiskGeometry* geometry);
