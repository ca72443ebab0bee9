// Sources: the C library's count of processors and /proc/cpuinfo; the firmware's feature word for a kernel that
// lists no flags. Nothing on this platform knows of partitions: the machine is one, and the shares of it are not
// known.

#include "linux/LParGroup.h"

#include <sys/sysinfo.h>

#include "SMBIOS/SMProcessor.h"
#include "com/VexDebug.h"
#include "com/VexTable.h"

namespace
{

uint32_t askFirmwareFeatures()
{
    unsigned short currentSpeed = 0;
    unsigned short externalClock = 0;
    unsigned short upgrade = 0;
    int features = 0;
    SM_Processor(&currentSpeed, &externalClock, &upgrade, &features);
    return static_cast<uint32_t>(features);
}

} // namespace

LParGroup::LParGroup() : VexGroup(GROUP_LPAR, 1) {}

int32_t nodeCapacity(int32_t available, const CpuTopology& cpu, uint32_t firmwareFeatures)
{
    const uint32_t features =
        cpu.flags == nullptr ? firmwareFeatures : static_cast<uint32_t>(makeCPUflagsFromString(cpu.flags.get()));
    if (!cpu.hyperThreaded(features))
        return available;
    const int32_t capacity = cpu.packages();
    VEX_LOG(DEBUG_LPAR, VEX_LEVEL_DETAIL, "\nHyperthreading detected: Physical CPU count=%d", capacity);
    VEX_LOG(DEBUG_LPAR, VEX_LEVEL_DETAIL, "\nnode capacity=%d", capacity);
    return capacity;
}

VexTable* LParGroup::getTable()
{
    constexpr float kNotKnown = -1.0F;
    const VexGroupFrame frame(DEBUG_LPAR, "LPar");
    const int32_t available = get_nprocs();
    TextStream stream = TextStream::openFile("/proc/cpuinfo");
    const CpuTopology cpu = readCpuTopology(stream);
    stream.close();
    const int32_t capacity = nodeCapacity(available, cpu, cpu.flags == nullptr ? askFirmwareFeatures() : 0);
    auto* const row = new VexTableRow;
    row->addString(LPAR_ID, "");
    row->addString(LPAR_SHAREDPOOL_ID, "");
    row->addFloat(LPAR_NODE_CAPACITY, static_cast<float>(capacity));
    row->addFloat(LPAR_LPAR_CAPACITY, kNotKnown);
    row->addFloat(LPAR_SHAREDPOOL_CAPACITY, kNotKnown);
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    table->addRow(row);
    return table;
}
