#pragma once

#include <cstdint>

#include "linux/storage/SCSIDevice.h"

// SCSI devices asked through ioctls: of the generic node, and of the disk, tape or CD-ROM node of the same device.

/// Identifies the device behind a generic node. Returns 1 when the node told its address and answered an INQUIRY, else
/// 0. Sets info to a new object, which the caller owns, when the device is of no special kind or its disk, tape or
/// CD-ROM node was found among the first four; otherwise leaves it alone.
int get_scsi_info(const char* path, SCSIInfo*& info);

/// The packed address of the device behind an open node: target, LUN, channel and host, a byte each from the lowest
/// one up; -1 when the node does not tell.
int32_t get_scsi_idlun(int fd);

/// The size of an open block node in sectors of 512 bytes. Returns 0, or the result of the ioctl that failed.
int disk_size(int fd, unsigned long long* sectors);

/// Sectors of 512 bytes in megabytes, cut to 32 bits.
uint32_t get_megabytes(unsigned long long sectors);
