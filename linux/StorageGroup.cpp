#include "linux/StorageGroup.h"

#include <cstdlib>
#include <ctime>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/StorageProbes.h"
#include "linux/TapeActivity.h"
#include "linux/TextStream.h"

// The table under construction, to which the probes add their rows.
static VexTable* table = nullptr;

void addDriveRow(int* counter, const DriveRow& drive)
{
    auto* row = new VexTableRow;
    row->addULong(STORAGE_INDEX, static_cast<uint32_t>(++*counter));
    row->addString(STORAGE_ID, drive.id);
    row->addULong(STORAGE_TYPE, drive.type);
    row->addString(STORAGE_MODEL, drive.model);
    row->addString(STORAGE_MANUFACTURER, drive.manufacturer);
    row->addString(STORAGE_SERIAL_NUMBER, drive.serialNumber);
    row->addULong(STORAGE_CYLINDERS, drive.cylinders);
    row->addULong(STORAGE_SECTORS, drive.sectors);
    row->addULong(STORAGE_HEADS, drive.heads);
    row->addULong(STORAGE_TOTAL_SIZE, drive.megabytes);
    row->addULong(STORAGE_SECURITY_ENABLED, drive.security);
    table->addRow(row);
}

int loadSG()
{
    int loaded = 0;
    TextStream modprobe = TextStream::runCommand("/sbin/modprobe --first-time sg 2>modprobe.error");
    const bool ran = static_cast<bool>(modprobe);
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

static void unloadSG()
{
    TextStream::runCommand("/sbin/modprobe --first-time -r sg 2>/dev/null").close();
}

using Probe = unsigned int (*)(int* counter);

static unsigned int runProbe(const char* name, Probe probe, int* counter)
{
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n %s call %s()", vexTimeLine(time(nullptr)), name);
    const unsigned int result = probe(counter);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n %s  exit %s()", vexTimeLine(time(nullptr)), name);
    return result;
}

static void runProbes()
{
    int counter = 0;
    runProbe("gatherIDEDriveInformation", gatherIDEDriveInformation, &counter);
    runProbe("gatherDAC960RAIDDriveInformation", gatherDAC960RAIDDriveInformation, &counter);
    // The Smart RAID status file is looked at only where the mounted CCISS devices cannot be listed.
    if (runProbe("gatherCCISSDriveInformation", gatherCCISSDriveInformation, &counter) == 0)
        runProbe("gatherCompaqSmartRAIDDriveInformation", gatherCompaqSmartRAIDDriveInformation, &counter);
    runProbe("gatherSCSIDriveInformation", gatherSCSIDriveInformation, &counter);
    runProbe("gatherFloppyDriveInformation", gatherFloppyDriveInformation, &counter);
}

StorageGroup::StorageGroup() : VexGroup(GROUP_STORAGE, 1) {}

VexTable* StorageGroup::getTable()
{
    const int loaded = loadSG();
    VexGroupFrame frame(DEBUG_STORAGE, "Storage");
    table = new VexTable(getGroupId(), getGroupVersion());
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
