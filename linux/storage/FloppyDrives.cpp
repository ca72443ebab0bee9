#include "linux/storage/FloppyDrives.h"

#include "com/VexDebug.h"
#include "linux/floppyinfo.h"
#include "linux/storage/DriveNodes.h"
#include "linux/storage/DriveRows.h"

namespace
{

void addFloppyDrive(int* counter, const floppyinfo& info)
{
    const auto kilobytes = static_cast<uint32_t>(info.totalsize());
    DriveRow drive;
    drive.type = STORAGE_TYPE_FLOPPY;
    drive.model = info.model();
    drive.geometry = info.geometry();
    logDrive("Add Floppy", LoggedNames::Model, *counter, drive, kilobytes);
    const OwnedText id = digestGeometry(drive.geometry, kilobytes);
    drive.id = id.get();
    addDriveRow(counter, drive);
}

} // namespace

unsigned int gatherFloppyDriveInformation(int* counter)
{
    OwnedText name = getNextDrive("/dev/fd", false);
    while (name != nullptr) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nFloppy name=>%s<", name.get());
        const floppyinfo info(name.get());
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nFloppy errorcode=>%d<", info.errorcode());
        name = getNextDrive("/dev/fd", false);
        if (info.errorcode() == 0)
            addFloppyDrive(counter, info);
    }
    return 0;
}
