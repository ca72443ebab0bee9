// Sources: one probe for each kind of drive, which asks the kernel's files, the drive itself by ioctl or SCSI command,
// or fdisk and mount. What a drive says of itself is believed; what cannot be asked leaves 0 and empty texts, and some
// probes then repeat the drive before, as they say.

#include "linux/StorageGroup.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/stat.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/storage/CCISSDrives.h"
#include "linux/storage/CompaqSmartDrives.h"
#include "linux/storage/DAC960Drives.h"
#include "linux/storage/DriveRows.h"
#include "linux/storage/FloppyDrives.h"
#include "linux/storage/IDEDrives.h"
#include "linux/storage/SCSIDrives.h"
#include "linux/storage/TapeActivity.h"
#include "linux/text/TextStream.h"

namespace
{

// Takes away whatever stands under the name that the next command writes to: its shell would follow a link planted
// there, and wait at a pipe. False when something stays.
bool clearErrorFile()
{
    struct stat status;
    remove("modprobe.error");
    return lstat("modprobe.error", &status) != 0;
}

void unloadSG()
{
    TextStream::runCommand("/sbin/modprobe --first-time -r sg 2>/dev/null").close();
}

struct Probe {
    const char* name;
    unsigned int (*gather)(int* counter);
    bool afterNoneOnly = false; // only when the probe before it returned 0
};

// In the order of the report. The Smart RAID status file is looked at only where the mounted CCISS devices cannot be
// listed.
constexpr Probe kProbes[] = {
    {"gatherIDEDriveInformation", gatherIDEDriveInformation},
    {"gatherDAC960RAIDDriveInformation", gatherDAC960RAIDDriveInformation},
    {"gatherCCISSDriveInformation", gatherCCISSDriveInformation},
    {"gatherCompaqSmartRAIDDriveInformation", gatherCompaqSmartRAIDDriveInformation, true},
    {"gatherSCSIDriveInformation", gatherSCSIDriveInformation},
    {"gatherFloppyDriveInformation", gatherFloppyDriveInformation},
};

unsigned int runProbe(const Probe& probe, int* counter)
{
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n %s call %s()", vexTimeLine(time(nullptr)), probe.name);
    const unsigned int result = probe.gather(counter);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n %s  exit %s()", vexTimeLine(time(nullptr)), probe.name);
    return result;
}

void runProbes()
{
    int counter = 0;
    unsigned int result = 0;
    for (const Probe& probe : kProbes)
        if (!probe.afterNoneOnly || result == 0)
            result = runProbe(probe, &counter);
}

} // namespace

int loadSG()
{
    int loaded = 0;
    if (!clearErrorFile())
        return loaded;
    TextStream modprobe = TextStream::runCommand("/sbin/modprobe --first-time sg 2>modprobe.error");
    const auto ran = static_cast<bool>(modprobe);
    modprobe.close();
    if (ran) {
        TextStream errors = TextStream::runCommand("cat modprobe.error 2>/dev/null");
        char line[256];
        if (errors && !errors.readLine(line))
            loaded = 1;
    }
    TextStream::runCommand("rm -f modprobe.error 2>/dev/null").close();
    return loaded;
}

StorageGroup::StorageGroup() : VexGroup(GROUP_STORAGE, 1) {}

VexTable* StorageGroup::getTable()
{
    const int loaded = loadSG();
    VexGroupFrame frame(DEBUG_STORAGE, "Storage");
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    beginDriveRows(table);
    // A drive that is asked while a backup writes to it may break the backup; the module stays loaded then, on purpose.
    if (getenv("CHECK_ULTRIUM_TAPE_RUNNING") != nullptr && isUltrium_tape_QX9031_running() == 1)
        return table;
    runProbes();
    if (loaded == 1)
        unloadSG();
    frame.close();
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nafter GROUP_END Storage - returning table");
    return table;
}
