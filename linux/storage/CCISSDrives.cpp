#include "linux/storage/CCISSDrives.h"

#include <cstdio>
#include <cstring>

#include "com/VexDebug.h"
#include "com/md5file.h"
#include "linux/storage/CompaqSmartDrives.h"
#include "linux/storage/DriveRows.h"
#include "linux/storage/FdiskGeometry.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

namespace
{

// The disks behind CCISS controllers that file systems are mounted from.

// Cuts "/dev/cciss/c0d0p1 on /usr ..." after the disk; nothing before its partition has a "p".
void cutAtPartition(char* line)
{
    char* partition = strchr(line, 'p');
    if (partition != nullptr)
        *partition = '\0';
}

// Several disks have the same geometry here: the last character of the name tells them apart. The figures are written
// as signed ones.
OwnedText digestDisk(const DriveGeometry& geometry, const char* disk)
{
    char text[255];
    snprintf(text, sizeof text, "%i%i%i%i%c", static_cast<int>(geometry.cylinders), static_cast<int>(geometry.sectors),
             static_cast<int>(geometry.heads), static_cast<int>(geometry.kilobytes), disk[strlen(disk) - 1]);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: = this is used to make the checksum %s\n", text);
    return OwnedText(md5_checksum(text));
}

void addDisk(int* counter, const DriveGeometry& geometry, const char* disk)
{
    DriveRow drive;
    drive.type = STORAGE_TYPE_HARD_DISK;
    drive.model = kCompaqModel;
    drive.manufacturer = kCompaqManufacturer;
    drive.serialNumber = kRaidSerialNumber;
    drive.geometry = geometry;
    logDrive("CCISS: Add SCSI", LoggedNames::ModelAndManufacturer, *counter, drive,
             static_cast<uint32_t>(geometry.kilobytes));
    const OwnedText id = digestDisk(geometry, disk);
    drive.id = id.get();
    addDriveRow(counter, drive);
}

void gatherFromListing(TextStream& mounts, int* counter)
{
    std::string disks;
    // Kept from disk to disk: one that fdisk says nothing about repeats the one before it, deliberately.
    DriveGeometry geometry;
    char line[256];
    while (mounts.readLine(line)) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: line =>%s<", line);
        if (!contains(line, "cciss") || !takeMountedDisk(line, &disks))
            continue;
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: call getFromFdiskMount := %s\n", line);
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: = %s\n", line);
        if (getFromFdiskMount(line, &geometry) == 0)
            VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nCCISS: getFromFdiskMount returned 0");
        addDisk(counter, geometry, line);
    }
}

} // namespace

bool takeMountedDisk(char* line, std::string* disks)
{
    cutAtPartition(line);
    // A part of another disk's name is enough for a disk to count as handled.
    if (disks->find(line) != std::string::npos) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: = %s is already added\n", line);
        return false;
    }
    if (!disks->empty())
        *disks += ',';
    *disks += line;
    return true;
}

unsigned int gatherCCISSDriveInformation(int* counter)
{
    TextStream mounts = TextStream::runCommand("/bin/mount");
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nrunning /bin/mount\n");
    if (mounts.atEnd())
        return 0;
    gatherFromListing(mounts, counter);
    mounts.close();
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nexit CCISS: SCSI <");
    return 1;
}
