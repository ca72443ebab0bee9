#include "linux/floppyinfo.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <linux/fd.h>
#include <sys/ioctl.h>

#include "linux/DeviceNode.h"
#include "linux/processor/CpuInfo.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

namespace
{

constexpr int kFailed = 10;
constexpr int kNotOpened = 20;

} // namespace

FloppyGeometry decodeFloppyGeometry(const floppy_struct& disk)
{
    FloppyGeometry geometry;
    geometry.heads = disk.head;
    geometry.sectors = disk.sect;
    geometry.cylinders = disk.track;
    geometry.sectorSize = FD_SECTSIZE(&disk);
    const uint32_t bytes =
        geometry.cylinders * geometry.heads * geometry.sectors * static_cast<uint32_t>(geometry.sectorSize);
    geometry.kilobytes = static_cast<uint32_t>(static_cast<int32_t>(bytes) / 1024);
    return geometry;
}

bool describesItanium(TextStream& text)
{
    char line[kCpuInfoLineSize];
    char architecture[kCpuInfoLineSize] = "";
    char family[kCpuInfoLineSize] = "";
    bool hasArchitecture = false;
    bool hasFamily = false;
    while (text.readLine(line)) {
        dropTrailingControl(line);
        if (!hasArchitecture && contains(line, "arch")) {
            parseLine(line, architecture);
            hasArchitecture = true;
        }
        if (!hasFamily && contains(line, "family")) {
            parseLine(line, family);
            hasFamily = true;
        }
        if (strcmp(architecture, "IA-64") == 0 && contains(family, "Itanium"))
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
    const int geometryResult = determineFloppygeometry(drive.descriptor());
    const int typeResult = determineFloppytype(drive.descriptor());
    if (geometryResult == 0 || typeResult == 0)
        errorcode_ = 0;
}

char* floppyinfo::serialnumber()
{
    return strdup("");
}

char* floppyinfo::type()
{
    return strdup("floppy");
}

int floppyinfo::determineFloppygeometry(int fd)
{
    floppy_struct disk = {};
    if (ioctl(fd, FDGETPRM, &disk) < 0) {
        errorcode_ = errno;
        mediaPresent_ = false;
        return kFailed;
    }
    geometry_ = decodeFloppyGeometry(disk);
    mediaPresent_ = true;
    return 0;
}

int floppyinfo::determineFloppytype(int fd)
{
    floppy_drive_name name = {};
    if (ioctl(fd, FDGETDRVTYP, name) < 0) {
        errorcode_ = errno;
        return kFailed;
    }
    snprintf(model_, sizeof model_, "%.*s", static_cast<int>(sizeof name), name);
    return strcmp(model_, "(null)") == 0 ? kFailed : 0;
}
