#pragma once

#include <cstdint>

#include "com/Owned.h"
#include "com/VexEnumValues.h"
#include "linux/DriveGeometry.h"

class VexTable;

// The rows of the Storage group: what identifies a drive, what the log says of it, and its row.

/// The serial number that stands for a drive behind a RAID controller.
constexpr char kRaidSerialNumber[] = "+";

/// One row of the Storage group but for its index. The texts are borrowed until the row has been added.
struct DriveRow {
    const char* id = ""; // a digest; drives of equal geometry may have equal ones
    uint32_t type = STORAGE_TYPE_UNKNOWN;
    const char* model = "";
    const char* manufacturer = "";
    const char* serialNumber = "";
    DriveGeometry geometry;
    uint32_t security = STORAGE_SECURITY_UNSUPPORTED;
};

/// Makes newTable the one under construction: the rows added from now on go there.
void beginDriveRows(VexTable* newTable);

/// Adds one to the counter and a row with that index to the table under construction.
void addDriveRow(int* counter, const DriveRow& drive);

/// The identifier of a drive that is known by its geometry only: the digest of cylinders, sectors, heads and size, and
/// of mark behind them. size is in the probe's own unit: kilobytes, but megabytes for the SCSI probe.
OwnedText digestGeometry(const DriveGeometry& geometry, uint32_t size, const char* mark = "");

/// Which names of a drive the log shows, and in which order.
enum class LoggedNames { Model, ModelAndManufacturer, ManufacturerAndModel };

/// Logs the row that is about to be added; title is "Add SCSI" or the like, index the counter before the row, size in
/// the probe's own unit.
void logDrive(const char* title, LoggedNames names, int index, const DriveRow& drive, uint32_t size);
