#include "linux/storage/CompaqSmartDrives.h"

#include <cstring>
#include <string>

#include "com/VexDebug.h"
#include "linux/storage/DriveRows.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

namespace
{

// The disks of the first Smart RAID controller, from the CCISS driver's status file:
//
//   /dev/cciss/c0d0: blksz=512 nr_blocks=71122560
constexpr char kStatusFile[] = "/proc/driver/cciss/cciss0";

bool describesDisk(const char* line)
{
    return contains(line, "nr_blocks");
}

// The text behind the first of these characters; the end of text when it has none.
const char* behind(const char* text, const char* characters)
{
    text += strcspn(text, characters);
    return *text == '\0' ? text : text + 1;
}

// Kilobytes of "name: blksz=A nr_blocks=B". B is divided first, so that the product fits 32 bits.
uint32_t parseSmartDiskSize(const char* line)
{
    const char* blockSize = behind(behind(line, ": "), "=");
    const char* blocks = behind(behind(blockSize, " "), "=");
    return parseULong(blockSize) * (parseULong(blocks) / 1024);
}

void addSmartDisk(int* counter, uint32_t kilobytes, int n)
{
    DriveRow drive;
    drive.type = STORAGE_TYPE_HARD_DISK;
    drive.manufacturer = kCompaqManufacturer;
    drive.model = kCompaqModel;
    drive.serialNumber = kRaidSerialNumber;
    drive.geometry.kilobytes = kilobytes;
    logDrive("Add RAID", LoggedNames::ManufacturerAndModel, *counter, drive, kilobytes);
    const OwnedText id = digestGeometry(drive.geometry, kilobytes, std::to_string(n).c_str());
    drive.id = id.get();
    addDriveRow(counter, drive);
}

} // namespace

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

int getCompaqSmartDiskNum()
{
    TextStream status = TextStream::openFile(kStatusFile);
    return static_cast<int>(readSmartDiskSizes(status).size());
}

uint32_t getCompaqSmartDiskSize(int n)
{
    TextStream status = TextStream::openFile(kStatusFile);
    const std::vector<uint32_t> sizes = readSmartDiskSizes(status);
    return n < 1 || static_cast<size_t>(n) > sizes.size() ? 0 : sizes[static_cast<size_t>(n) - 1];
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
