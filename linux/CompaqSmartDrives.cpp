#include "linux/RAIDDrives.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "com/VexDebug.h"
#include "com/md5file.h"
#include "linux/StorageProbes.h"
#include "linux/TextParse.h"
#include "linux/TextStream.h"

// The disks of the first Smart RAID controller, from the CCISS driver's status file:
//
//   /dev/cciss/c0d0: blksz=512 nr_blocks=71122560
static constexpr char kStatusFile[] = "/proc/driver/cciss/cciss0";

static bool describesDisk(const char* line)
{
    return strstr(line, "nr_blocks") != nullptr;
}

// The text behind the first of these characters; the end of text when it has none.
static const char* behind(const char* text, const char* characters)
{
    text += strcspn(text, characters);
    return *text == '\0' ? text : text + 1;
}

// Kilobytes of "name: blksz=A nr_blocks=B". B is divided first, so that the product fits 32 bits.
static uint32_t parseSmartDiskSize(const char* line)
{
    const char* blockSize = behind(behind(line, ": "), "=");
    const char* blocks = behind(behind(blockSize, " "), "=");
    return parseULong(blockSize) * (parseULong(blocks) / 1024);
}

std::vector<uint32_t> readSmartDiskSizes(TextStream& status)
{
    std::vector<uint32_t> sizes;
    char line[256];
    while (status.readLine(line)) {
        if (describesDisk(line))
            sizes.push_back(parseSmartDiskSize(line));
    }
    return sizes;
}

static void addSmartDisk(int* counter, uint32_t kilobytes, int n)
{
    DriveRow drive;
    drive.type = STORAGE_TYPE_HARD_DISK;
    drive.manufacturer = COMPAQ_MANUFACTURER;
    drive.model = COMPAQ_MODEL;
    drive.serialNumber = RAID_SERIAL_NUMBER;
    drive.megabytes = kilobytes >> 10;
    logRAIDDrive(*counter, drive, kilobytes);
    char text[255];
    snprintf(text, sizeof text, "%" PRIu32 "%" PRIu32 "%" PRIu32 "%" PRIu32 "%i", drive.cylinders, drive.sectors,
             drive.heads, kilobytes, n);
    const OwnedText id(md5_checksum(text));
    drive.id = id.get();
    addDriveRow(counter, drive);
}

unsigned int gatherCompaqSmartRAIDDriveInformation(int* counter)
{
    TextStream status = TextStream::openFile(kStatusFile);
    if (!status) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nfopen(cat /proc/driver/cciss/cciss0) failed");
        return 0;
    }
    const std::vector<uint32_t> sizes = readSmartDiskSizes(status);
    if (sizes.empty()) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n no disk associated to Compaq Smart RAID ");
        return 0;
    }
    int n = 0;
    for (const uint32_t kilobytes : sizes)
        addSmartDisk(counter, kilobytes, ++n);
    return 0;
}
