#include "linux/floppyinfo.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <linux/fd.h>

#include "linux/CpuInfo.h"
#include "linux/DeviceNode.h"
#include "linux/TextParse.h"
#include "linux/TextStream.h"

static constexpr int kFailed = 10;
static constexpr int kNotOpened = 20;

FloppyGeometry decodeFloppyGeometry(const floppy_struct& disk)
{
    FloppyGeometry geometry;
    geometry.heads = disk.head;
    geometry.sectors = disk.sect;
    geometry.cylinders = disk.track;
    geometry.sectorSize = FD_SECTSIZE(&disk);
    const uint32_t bytes =
        geometry.cylinders * geometry.heads * geometry.sectors * static_cast<uint32_t>(geometry.sectorSize);
    geometry.kilobytes = static_cast<int32_t>(bytes) / 1024;
    return geometry;
}

bool describesItanium(TextStream& text)
{
    char line[CPUINFO_LINE_SIZE];
    char architecture[CPUINFO_LINE_SIZE] = "";
    char family[CPUINFO_LINE_SIZE] = "";
    bool hasArchitecture = false;
    bool hasFamily = false;
    while (text.readLine(line)) {
        dropTrailingControl(line);
        if (!hasArchitecture && strstr(line, "arch") != nullptr) {
            parseLine(line, architecture);
            hasArchitecture = true;
        }
        if (!hasFamily && strstr(line, "family") != nullptr) {
            parseLine(line, family);
            hasFamily = true;
        }
        if (strcmp(architecture, "IA-64") == 0 && strstr(family, "Itanium") != nullptr)
            return true;
    }
    return false;
}

int floppyinfo::itaniumIA64()
{
    TextStream text = TextStream::openFile("/proc/cpuinfo");
    return describesItanium(text) ? 1 : 0;
}

floppyinfo::floppyinfo(const char* path)
{
    if (itaniumIA64() == 1) {
        errorcode_ = kNotOpened;
        return;
    }
    const DeviceNode drive(path, O_RDONLY | O_NONBLOCK);
    // Descriptor 0 counts as not opened, deliberately.
    if (drive.descriptor() < 1) {
        errorcode_ = kNotOpened;
        return;
    }
    const int geometry = determineFloppygeometry(drive);
    const int type = determineFloppytype(drive);
    if (geometry == 0 || type == 0)
        errorcode_ = 0;
}

int floppyinfo::determineFloppygeometry(const DeviceNode& drive)
{
    floppy_struct disk = {};
    if (drive.control(FDGETPRM, &disk) < 0) {
        errorcode_ = errno;
        mediaPresent_ = false;
        return kFailed;
    }
    geometry_ = decodeFloppyGeometry(disk);
    mediaPresent_ = true;
    return 0;
}

int floppyinfo::determineFloppytype(const DeviceNode& drive)
{
    floppy_drive_name name = {};
    if (drive.control(FDGETDRVTYP, name) < 0) {
        errorcode_ = errno;
        return kFailed;
    }
    snprintf(model_, sizeof model_, "%.*s", static_cast<int>(sizeof name), name);
    return strcmp(model_, "(null)") == 0 ? kFailed : 0;
}
