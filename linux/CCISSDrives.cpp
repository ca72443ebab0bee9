#include "linux/RAIDDrives.h"

#include <cstdio>
#include <cstring>

#include "com/VexDebug.h"
#include "com/md5file.h"
#include "linux/FdiskGeometry.h"
#include "linux/StorageProbes.h"
#include "linux/TextStream.h"

// The disks behind CCISS controllers that file systems are mounted from.

// Cuts "/dev/cciss/c0d0p1 on /usr ..." after the disk; nothing before its partition has a "p".
static void cutAtPartition(char* line)
{
    char* partition = strchr(line, 'p');
    if (partition != nullptr)
        *partition = '\0';
}

// Several disks have the same geometry here: the last character of the name tells them apart.
static OwnedText digestDisk(const DiskGeometry& geometry, const char* disk)
{
    char text[255];
    snprintf(text, sizeof text, "%i%i%i%i%c", static_cast<int>(geometry.cylinders), static_cast<int>(geometry.sectors),
             static_cast<int>(geometry.heads), static_cast<int>(geometry.kilobytes), disk[strlen(disk) - 1]);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: = this is used to make the checksum %s\n", text);
    return OwnedText(md5_checksum(text));
}

static void addDisk(int* counter, const DiskGeometry& geometry, const char* disk)
{
    DriveRow drive;
    drive.type = STORAGE_TYPE_HARD_DISK;
    drive.model = COMPAQ_MODEL;
    drive.manufacturer = COMPAQ_MANUFACTURER;
    drive.serialNumber = RAID_SERIAL_NUMBER;
    drive.cylinders = geometry.cylinders;
    drive.sectors = geometry.sectors;
    drive.heads = geometry.heads;
    drive.megabytes = geometry.kilobytes >> 10;
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL,
            "\nCCISS: Add SCSI index=>%d< type=>%d< model=>%s< manufac=>%s< serial=>%s< cyl=>%d< sectors=>%d< "
            "heads=>%d< size KB=>%d<",
            *counter, static_cast<int>(drive.type), drive.model, drive.manufacturer, drive.serialNumber,
            static_cast<int>(drive.cylinders), static_cast<int>(drive.sectors), static_cast<int>(drive.heads),
            static_cast<int>(geometry.kilobytes));
    const OwnedText id = digestDisk(geometry, disk);
    drive.id = id.get();
    addDriveRow(counter, drive);
}

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

static void gatherFromListing(TextStream& mounts, int* counter)
{
    std::string disks;
    // Kept from disk to disk: one that fdisk says nothing about repeats the one before it, deliberately.
    DiskGeometry geometry;
    char line[256];
    while (mounts.readLine(line)) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: line =>%s<", line);
        if (strstr(line, "cciss") == nullptr || !takeMountedDisk(line, &disks))
            continue;
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: call getFromFdiskMount := %s\n", line);
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "CCISS: = %s\n", line);
        if (getFromFdiskMount(line, &geometry) == 0)
            VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nCCISS: getFromFdiskMount returned 0");
        addDisk(counter, geometry, line);
    }
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
