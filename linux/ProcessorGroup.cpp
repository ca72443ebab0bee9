// Sources: the C library for the number of processors; /proc/cpuinfo; the firmware's Processor structures. The
// kernel is believed for flags, the firmware for family and clocks where it tells them, and for the number of
// sockets. All rows carry the facts of the first processor.

#include "linux/ProcessorGroup.h"

#include <algorithm>
#include <sys/sysinfo.h>
#include <unistd.h>
#include <utility>

#include "SMBIOS/SMProcessor.h"
#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/processor/ProcessorFacts.h"

namespace
{

// Twice what any kernel runs on: a count that only a forged list can give must not fill the memory with rows.
constexpr int32_t kMaxProcessors = 16384;

int32_t countAvailableProcessors()
{
    const int32_t count = get_nprocs();
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nnumber of procs available =%ld", sysconf(_SC_NPROCESSORS_CONF));
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nnumber of procs on line =%ld", sysconf(_SC_NPROCESSORS_ONLN));
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nnumber of procs the os is configured =%d", get_nprocs_conf());
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nnumber of procs available get_nprocs() count=%d", count);
    return count;
}

CpuInfo readKernelFacts()
{
    TextStream stream = TextStream::openFile("/proc/cpuinfo");
    return readCpuInfo(stream);
}

FirmwareProcessor askFirmware()
{
    FirmwareProcessor firmware;
    int features = 0;
    SM_Processor(&firmware.currentSpeed, &firmware.externalClock, &firmware.interfaceCode, &features);
    firmware.features = static_cast<uint32_t>(features);
    firmware.family = static_cast<uint32_t>(SM_ProcessorFamily());
    firmware.populatedSockets = static_cast<int32_t>(SM_PopulatedProcessorCount());
    return firmware;
}

} // namespace

ProcessorGroup::ProcessorGroup() : VexGroup(GROUP_PROCESSOR, 1) {}

VexTable* ProcessorGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_PROCESSOR, "Processor");
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    const int32_t available = countAvailableProcessors();
    CpuInfo cpu = readKernelFacts();
    const FirmwareProcessor firmware = askFirmware();
    ProcessorFacts facts = mergeFacts(std::move(cpu), firmware);
    const int32_t count =
        std::min(countProcessors(available, facts.cpu, facts.features, firmware.populatedSockets), kMaxProcessors);
    facts.family = decideFamily(facts.cpu, firmware.family);
    const OwnedText id = processorId(facts);
    for (int32_t index = 1; index <= count; ++index)
        table->addRow(newProcessorRow(static_cast<uint32_t>(index), id.get(), facts));
    return table;
}
