#include "linux/RAIDDrives.h"

#include <cstring>

#include "com/VexDebug.h"
#include "linux/FdiskGeometry.h"
#include "linux/StorageProbes.h"
#include "linux/TextStream.h"

// The drives of the first DAC960 controller, from the driver's status file:
//
//   Configuring Mylex AcceleRAID 352 PCI RAID Controller
//     /dev/rd/c0d0: RAID-5, Online, 17928192 blocks, Write Thru
static constexpr char kStatusFile[] = "/proc/rd/c0/current_status";

void logRAIDDrive(int index, const DriveRow& drive, uint32_t kilobytes)
{
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL,
            "\nAdd RAID index=>%d< type=>%d< manufac=>%s< model=>%s< serial=>%s< cyl=>%d< sectors=>%d< heads=>%d< "
            "size KB=>%d<",
            index, static_cast<int>(drive.type), drive.manufacturer, drive.model, drive.serialNumber,
            static_cast<int>(drive.cylinders), static_cast<int>(drive.sectors), static_cast<int>(drive.heads),
            static_cast<int>(kilobytes));
}

// Where the device stands in the line of a logical drive; null in any other line.
static const char* findDevice(const char* line)
{
    if (strstr(line, "(/dev/rd") != nullptr)
        return nullptr;
    return strstr(line, "/dev/rd");
}

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

// The second word of at least three; empty in a shorter line.
static std::string controllerName(const char* line)
{
    constexpr char kDelimiters[] = " \n";
    const char* first = line + strspn(line, kDelimiters);
    const char* afterFirst = first + strcspn(first, kDelimiters);
    const char* second = afterFirst + strspn(afterFirst, kDelimiters);
    const size_t length = strcspn(second, kDelimiters);
    const char* third = second + length + strspn(second + length, kDelimiters);
    return *third == '\0' ? std::string() : std::string(second, length);
}

static void parseLogicalDrive(const char* device, RAIDInfo* record)
{
    const size_t length = strcspn(device, ":\n");
    record->device.assign(device, length);
    const char* rest = device + length;
    if (*rest == ':')
        ++rest;
    rest += strspn(rest, " \n");
    record->level.assign(rest, strcspn(rest, " ,\n"));
}

void readCurrentStatus(TextStream& status, std::vector<RAIDInfo>& records)
{
    size_t count = 0;
    std::string controller;
    bool hasController = false;
    char line[256];
    while (count < records.size() && status.readLine(line)) {
        if (!hasController && strstr(line, "RAID Controller") != nullptr) {
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

static void addLogicalDrive(int* counter, const RAIDInfo& record, const DiskGeometry& geometry)
{
    DriveRow drive;
    drive.type = STORAGE_TYPE_HARD_DISK;
    drive.manufacturer = record.controllerName.c_str();
    drive.model = record.level.c_str();
    drive.serialNumber = RAID_SERIAL_NUMBER;
    drive.cylinders = geometry.cylinders;
    drive.sectors = geometry.sectors;
    drive.heads = geometry.heads;
    drive.megabytes = geometry.kilobytes >> 10;
    logRAIDDrive(*counter, drive, geometry.kilobytes);
    const OwnedText id = digestGeometry(drive.cylinders, drive.sectors, drive.heads, geometry.kilobytes);
    drive.id = id.get();
    addDriveRow(counter, drive);
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
    DiskGeometry geometry;
    for (const RAIDInfo& record : records) {
        getFromFdisk(record.device.c_str(), &geometry);
        addLogicalDrive(counter, record, geometry);
    }
    return 0;
}
