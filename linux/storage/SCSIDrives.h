#pragma once

/// Adds a row for every SCSI device that the kernel's generic driver names and that is a drive; counter is the number
/// of rows so far. Returns 0.
unsigned int gatherSCSIDriveInformation(int* counter);

/// The value of attribute "Type" for a SCSI peripheral type; -1 for a device that is no drive and is not reported.
int resolveSCSItype(int peripheralType);
