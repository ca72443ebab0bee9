#include "linux/storage/DAC960Drives.h"

#include <cstring>

#include "com/VexDebug.h"
#include "linux/storage/DriveRows.h"
#include "linux/storage/FdiskGeometry.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

namespace
{

// The drives of the first DAC960 controller, from the driver's status file:
//
//   Configuring Mylex AcceleRAID 352 PCI RAID Controller
//     /dev/rd/c0d0: RAID-5, Online, 17928192 blocks, Write Thru
constexpr char kStatusFile[] = "/proc/rd/c0/current_status";

// Where the device stands in the line of a logical drive; null in any other line.
const char* findDevice(const char* line)
{
    if (contains(line, "(/dev/rd"))
        return nullptr;
    return strstr(line, "/dev/rd");
}

// The second word of at least three; empty in a shorter line.
std::string controllerName(const char* line)
{
    constexpr char kDelimiters[] = " \n";
    const char* first = line + strspn(line, kDelimiters);
    const char* afterFirst = first + strcspn(first, kDelimiters);
    const char* second = afterFirst + strspn(afterFirst, kDelimiters);
    const size_t length = strcspn(second, kDelimiters);
    const char* third = second + length + strspn(second + length, kDelimiters);
    return *third == '\0' ? std::string() : std::string(second, length);
}

void parseLogicalDrive(const char* device, RAIDInfo* record)
{
    const size_t length = strcspn(device, ":\n");
    record->device.assign(device, length);
    const char* rest = device + length;
    if (*rest == ':')
        ++rest;
    rest += strspn(rest, " \n");
    record->level.assign(rest, strcspn(rest, " ,\n"));
}

void addLogicalDrive(int* counter, const RAIDInfo& record, const DriveGeometry& geometry)
{
    DriveRow drive;
    drive.type = STORAGE_TYPE_HARD_DISK;
    drive.manufacturer = record.controllerName.c_str();
    drive.model = record.level.c_str();
    drive.serialNumber = kRaidSerialNumber;
    drive.geometry = geometry;
    const auto kilobytes = static_cast<uint32_t>(geometry.kilobytes);
    logDrive("Add RAID", LoggedNames::ManufacturerAndModel, *counter, drive, kilobytes);
    const OwnedText id = digestGeometry(geometry, kilobytes);
    drive.id = id.get();
    addDriveRow(counter, drive);
}

} // namespace

int countLogicalDrives(TextStream& status)
{
    int count = 0;
    char line[256];
    while (status.readLine(line)) {
        if (findDevice(line) != nullptr)
            ++count;
    }
    return count;
}

void readCurrentStatus(TextStream& status, std::vector<RAIDInfo>& records)
{
    size_t count = 0;
    std::string controller;
    bool hasController = false;
    char line[256];
    while (count < records.size() && status.readLine(line)) {
        if (!hasController && contains(line, "RAID Controller")) {
            controller = controllerName(line);
            hasController = true;
        }
        const char* device = findDevice(line);
        if (device != nullptr) {
            parseLogicalDrive(device, &records[count]);
            records[count++].controllerName = controller;
        }
    }
}

int getLogicalDAC960DriveNum()
{
    TextStream status = TextStream::openFile(kStatusFile);
    return countLogicalDrives(status);
}

int getFromCurrentStatus(std::vector<RAIDInfo>& records)
{
    TextStream status = TextStream::openFile(kStatusFile);
    if (status.atEnd())
        return 0;
    readCurrentStatus(status, records);
    return 1;
}

unsigned int gatherDAC960RAIDDriveInformation(int* counter)
{
    if (!TextStream::openFile(kStatusFile))
        return 0;
    const int count = getLogicalDAC960DriveNum();
    if (count < 1) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n no logical drives associated to RAID ");
        return 0;
    }
    std::vector<RAIDInfo> records(static_cast<size_t>(count));
    if (getFromCurrentStatus(records) == 0) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ngetFromCurrentStatus returned 0");
        return 0;
    }
    // Kept from drive to drive: one that fdisk does not know repeats the one before it, deliberately.
    DriveGeometry geometry;
    for (const RAIDInfo& record : records) {
        getFromFdisk(record.device.c_str(), &geometry);
        addLogicalDrive(counter, record, geometry);
    }
    return 0;
}
