#pragma once

#include "linux/DriveGeometry.h"

class TextStream;

// The geometry of disks behind RAID controllers, which is asked of nobody but fdisk. The size in
// kilobytes is the product of the figures, of which 32 bits are kept while it still counts bytes.

/// Looks a disk up in fdisk's listing of all disks; a generic node (/dev/sgX) is looked up as its disk (/dev/sdX).
/// Returns 1 and the geometry, or 0 and leaves the outputs alone. Each of the four outputs holds 32 bits.
int getFromFdisk(const char* device, DriveGeometry* geometry);
int getFromFdisk(const char* device, unsigned long* heads, unsigned long* cylinders, unsigned long* sectors,
                 unsigned long* kilobytes);

/// Asks fdisk for one disk, with the same result. device comes from the mount listing and becomes part of a shell
/// command: a name with a character that a shell could take for more than itself is not asked for.
int getFromFdiskMount(const char* device, DriveGeometry* geometry);
int getFromFdiskMount(const char* device, unsigned long* heads, unsigned long* cylinders, unsigned long* sectors,
                      unsigned long* kilobytes);

/// The two lookups in text that fdisk wrote: the line that names the disk, and the line that counts its heads.
int findListedGeometry(TextStream& listing, const char* device, DriveGeometry* geometry);
int findMountedGeometry(TextStream& listing, DriveGeometry* geometry);
