#include "linux/storage/SCSIDrives.h"

#include <cstring>
#include <iterator>
#include <memory>
#include <scsi/scsi.h>
#include <string>

#include "com/VexDebug.h"
#include "linux/scsiinfo.h"
#include "linux/storage/DriveNodes.h"
#include "linux/storage/DriveRows.h"
#include "linux/storage/SCSIIoctl.h"
#include "linux/text/TextParse.h"

namespace
{

constexpr char kNodePrefix[] = "/dev/sg";
constexpr int kNotReported = -1;

// By peripheral type.
constexpr int kStorageTypes[] = {
    STORAGE_TYPE_HARD_DISK,       // direct access
    STORAGE_TYPE_TAPE_CARTRIDGE,  // sequential access
    kNotReported,                 // printer
    kNotReported,                 // processor
    STORAGE_TYPE_MAGNETO_OPTICAL, // write-once
    STORAGE_TYPE_CD_ROM,          // CD-ROM
    kNotReported,                 // scanner
    STORAGE_TYPE_MAGNETO_OPTICAL, // optical memory
};

struct SCSIDrive {
    int type = kNotReported; // value of attribute "Type"
    std::string model;
    std::string manufacturer;
    std::string serialNumber;
};

std::string trimmed(std::string text)
{
    trim2(text.data());
    text.resize(strlen(text.c_str()));
    return text;
}

std::string printableStart(const std::string& text)
{
    size_t length = 0;
    while (length < text.size() && text[length] >= ' ' && static_cast<unsigned char>(text[length]) < 128)
        ++length;
    return text.substr(0, length);
}

int reportedType(int peripheralType)
{
    const int type = resolveSCSItype(peripheralType);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nSCSI resolveSCSItype=>%d<", type);
    return type;
}

void takeNames(const SCSIIdentity& identity, SCSIDrive* drive)
{
    drive->model = trimmed(identity.product);
    drive->manufacturer = trimmed(identity.vendor);
}

// The device as its generic node and, where there is one (else null), its identity describe it; the type is
// kNotReported for a device that has no row.
SCSIDrive describe(const scsiinfo& device, const SCSIInfo* info)
{
    SCSIDrive drive;
    if (device.errorcode() != scsiinfo::NONE) {
        if (info != nullptr) {
            takeNames(info->identity(), &drive);
            drive.type = reportedType(info->identity().type);
        }
        return drive;
    }
    if (info != nullptr) {
        takeNames(info->identity(), &drive);
    } else {
        drive.model = trimmed(device.model());
        drive.manufacturer = trimmed(device.manufacturer());
    }
    drive.serialNumber = printableStart(trimmed(device.serialnumber()));
    drive.type = reportedType(static_cast<int>(device.type()));
    return drive;
}

// A CD-ROM and a device that could not be asked keep the geometry of the device before them.
void updateGeometry(const scsiinfo& device, const SCSIInfo* info, DriveGeometry* geometry)
{
    if (info != nullptr && info->disk())
        *geometry = static_cast<const SCSIDiskInfo*>(info)->geometry();
    else if (device.errorcode() == scsiinfo::NONE && device.type() != TYPE_ROM)
        *geometry = device.geometry();
}

// False for a device that has no row; geometry is then left alone.
bool probeNode(const char* path, SCSIDrive* drive, DriveGeometry* geometry)
{
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nSCSI name=>%s<", path);
    const scsiinfo device(path);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nSCSI errorcode=>%d<", device.errorcode());
    SCSIInfo* found = nullptr;
    get_scsi_info(path, found);
    const std::unique_ptr<const SCSIInfo> info(found);
    *drive = describe(device, info.get());
    if (drive->type == kNotReported)
        return false;
    updateGeometry(device, info.get(), geometry);
    return true;
}

void addDrive(int* counter, const SCSIDrive& drive, const DriveGeometry& geometry)
{
    DriveRow row;
    row.type = static_cast<uint32_t>(drive.type);
    row.model = drive.model.c_str();
    row.manufacturer = drive.manufacturer.c_str();
    row.serialNumber = drive.serialNumber.c_str();
    row.geometry = geometry;
    logDrive("Add SCSI", LoggedNames::ModelAndManufacturer, *counter, row, geometry.megabytes());
    const OwnedText id = digestGeometry(geometry, geometry.megabytes());
    row.id = id.get();
    addDriveRow(counter, row);
}

} // namespace

int resolveSCSItype(int peripheralType)
{
    if (peripheralType < 0 || peripheralType >= static_cast<int>(std::size(kStorageTypes)))
        return STORAGE_TYPE_UNKNOWN; // medium changers and all kinds younger than these
    return kStorageTypes[peripheralType];
}

unsigned int gatherSCSIDriveInformation(int* counter)
{
    DriveGeometry geometry; // not reset from drive to drive
    bool letters = true;
    OwnedText path = getNextDrive(kNodePrefix, letters);
    if (path == nullptr) {
        letters = false;
        path = getNextDrive(kNodePrefix, letters);
    }
    while (path != nullptr) {
        SCSIDrive drive;
        const bool reported = probeNode(path.get(), &drive, &geometry);
        path = getNextDrive(kNodePrefix, letters);
        if (reported)
            addDrive(counter, drive, geometry);
    }
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nexit SCSI <");
    return 0;
}
