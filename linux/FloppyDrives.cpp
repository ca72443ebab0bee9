#include "com/VexDebug.h"
#include "linux/StorageProbes.h"
#include "linux/floppyinfo.h"

static void addFloppyDrive(int* counter, const floppyinfo& info)
{
    const auto kilobytes = static_cast<uint32_t>(info.totalsize());
    DriveRow drive;
    drive.type = STORAGE_TYPE_FLOPPY;
    drive.model = info.model();
    drive.cylinders = info.numcylinders();
    drive.sectors = info.numsectors();
    drive.heads = info.numheads();
    drive.megabytes = kilobytes >> 10;
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL,
            "\nAdd Floppy index=>%d< type=>%d< model=>%s< cyl=>%d< sectors=>%d< heads=>%d< size KB=>%d<", *counter,
            static_cast<int>(drive.type), drive.model, static_cast<int>(drive.cylinders),
            static_cast<int>(drive.sectors), static_cast<int>(drive.heads), static_cast<int>(kilobytes));
    const OwnedText id = digestGeometry(drive.cylinders, drive.sectors, drive.heads, kilobytes);
    drive.id = id.get();
    addDriveRow(counter, drive);
}

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
