#pragma once

#include <cstdint>

#include "com/Owned.h"

// What the drive probes of the Storage group share: the probes themselves, the row that each of them adds for a drive,
// and the enumeration of device nodes.

/// The values of attribute "Type" that the probes produce.
enum StorageType : uint32_t {
    STORAGE_TYPE_UNKNOWN = 1,
    STORAGE_TYPE_TAPE_CARTRIDGE = 3,
    STORAGE_TYPE_CD_ROM = 17,
    STORAGE_TYPE_MAGNETO_OPTICAL = 22,
    STORAGE_TYPE_FLOPPY = 29,
    STORAGE_TYPE_HARD_DISK = 30,
};

/// The values of attribute "Security Enabled".
enum StorageSecurity : uint32_t {
    STORAGE_SECURITY_YES = 0,
    STORAGE_SECURITY_NO = 1,
    STORAGE_SECURITY_UNSUPPORTED = 2,
};

// The probes, in the order in which StorageGroup runs them. counter is the number of rows so far; a probe adds one to
// it for each row. Only the result of the CCISS probe has a meaning.
unsigned int gatherIDEDriveInformation(int* counter);
unsigned int gatherDAC960RAIDDriveInformation(int* counter);
/// 0 when there is no mount listing to look into, else 1, drives or not.
unsigned int gatherCCISSDriveInformation(int* counter);
unsigned int gatherCompaqSmartRAIDDriveInformation(int* counter);
unsigned int gatherSCSIDriveInformation(int* counter);
unsigned int gatherFloppyDriveInformation(int* counter);

/// One row of the Storage table but for its index. The texts are copied.
struct DriveRow {
    const char* id = ""; // a digest; drives of equal geometry may have equal ones
    uint32_t type = STORAGE_TYPE_UNKNOWN;
    const char* model = "";
    const char* manufacturer = "";
    const char* serialNumber = "";
    uint32_t cylinders = 0;
    uint32_t sectors = 0; // per track
    uint32_t heads = 0;
    uint32_t megabytes = 0;
    uint32_t security = STORAGE_SECURITY_UNSUPPORTED;
};

/// Adds one to the counter and a row with that index to the table under construction.
void addDriveRow(int* counter, const DriveRow& drive);

/// The identifier of a drive that is known by its geometry only. size is in the probe's own unit: kilobytes, but
/// megabytes for the SCSI probe.
OwnedText digestGeometry(uint32_t cylinders, uint32_t sectors, uint32_t heads, uint32_t size);

/// The path of the next device node that exists, named prefix + letter ("/dev/sga") or prefix + number ("/dev/fd0");
/// null at the first that does not, which lets the next enumeration start anew. All callers share one counter: after
/// 255 nodes it stands still and every later call of the process returns null.
OwnedText getNextDrive(const char* prefix, bool letters);

/// Strips leading and trailing white space in place.
void trim2(char* text);
