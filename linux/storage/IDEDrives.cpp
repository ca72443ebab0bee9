#include "linux/storage/IDEDrives.h"

#include "com/VexDebug.h"
#include "linux/IDEDevices.h"
#include "linux/ideinfo.h"
#include "linux/storage/DriveRows.h"
#include "linux/text/TextParse.h"

namespace
{

// Only a hard disk has a security state to report.
uint32_t resolveSecurity(uint32_t type, int32_t state)
{
    if (type != STORAGE_TYPE_HARD_DISK || state < 0)
        return STORAGE_SECURITY_UNSUPPORTED;
    return state == 1 ? STORAGE_SECURITY_YES : STORAGE_SECURITY_NO;
}

void addIDEDrive(int* counter, const char* path)
{
    const ideinfo info(path);
    DriveRow drive;
    drive.geometry = info.geometry();
    drive.manufacturer = info.manufacturer();
    drive.model = info.model();
    drive.serialNumber = info.serialnumber();
    drive.type = resolveIDEtype(info.type());
    drive.security = resolveSecurity(drive.type, info.security_enabled());
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nSecurity setting:%d", static_cast<int>(drive.security));
    const OwnedText id = digestGeometry(drive.geometry, info.totalsize());
    drive.id = id.get();
    addDriveRow(counter, drive);
}

} // namespace

uint32_t resolveIDEtype(const char* media)
{
    if (contains(media, "cdrom"))
        return STORAGE_TYPE_CD_ROM;
    if (contains(media, "disk"))
        return STORAGE_TYPE_HARD_DISK;
    return STORAGE_TYPE_UNKNOWN;
}

unsigned int gatherIDEDriveInformation(int* counter)
{
    char list[kIDEMaxDevices][kIDEPathSize];
    const int count = determineIDEfilelist(list);
    for (int i = 0; i < count; ++i)
        addIDEDrive(counter, list[i]);
    return 0;
}
