#include "linux/InvVexProv.h"

#include <cstddef>
#include <iterator>

#include "SMBIOS/SMBIOSTable.h"
#include "com/VexDebug.h"
#include "linux/ComponentIDGroup.h"
#include "linux/IpAddressGroup.h"
#include "linux/LParGroup.h"
#include "linux/MemoryGroup.h"
#include "linux/MemoryModulesGroup.h"
#include "linux/NetworkAdapterGroup.h"
#include "linux/OperatingSystemGroup.h"
#include "linux/PCIDeviceGroup.h"
#include "linux/PartitionGroup.h"
#include "linux/ProcessorGroup.h"
#include "linux/RegionalGroup.h"
#include "linux/SMBIOSGroup.h"
#include "linux/ScanInfoGroup.h"
#include "linux/StorageGroup.h"
#include "linux/UnixSystemParamsGroup.h"

namespace
{

// A collector is made by vexInit and deleted, through its own type, by vexTerm.
struct Collector {
    VexGroup* group; // null before vexInit
    VexGroup* (*create)();
    void (*destroy)(VexGroup* group);
};

template <class Group>
VexGroup* create()
{
    return new Group;
}

template <class Group>
void destroy(VexGroup* group)
{
    delete static_cast<Group*>(group);
}

template <class Group>
constexpr Collector entryOf()
{
    return {.group = nullptr, .create = create<Group>, .destroy = destroy<Group>};
}

// Every collector, in the order of the report. Listed here and not in the catalog, which also describes groups that
// nothing collects.
// clang-format off
constinit Collector collectors[] = {
    entryOf<ComponentIDGroup>(),
    entryOf<ProcessorGroup>(),
    entryOf<MemoryGroup>(),
    entryOf<MemoryModulesGroup>(),
    entryOf<OperatingSystemGroup>(),
    entryOf<StorageGroup>(),
    entryOf<IpAddressGroup>(),
    entryOf<NetworkAdapterGroup>(),
    entryOf<RegionalGroup>(),
    entryOf<UnixSystemParamsGroup>(),
    entryOf<ScanInfoGroup>(),
    entryOf<PartitionGroup>(),
    entryOf<SMBIOSGroup>(),
    entryOf<PCIDeviceGroup>(),
    entryOf<LParGroup>(),
};
// clang-format on

// Ids that vexGetSupportedTables has room for, the terminator included.
constexpr size_t kListSize = 32;
static_assert(std::size(collectors) < kListSize);

void loadGroups()
{
    for (Collector& entry : collectors)
        entry.group = entry.create();
}

void freeGroups()
{
    for (Collector& entry : collectors) {
        entry.destroy(entry.group);
        entry.group = nullptr;
    }
}

VexGroup* collectorOf(uint32_t groupId)
{
    for (const Collector& entry : collectors)
        if (entry.group != nullptr && entry.group->getGroupId() == groupId)
            return entry.group;
    return nullptr;
}

} // namespace

void vexInit(uint32_t category, uint32_t level, const char* logName)
{
    _vexDebugLevel = level;
    _vexDebugCategory = category;
    VexInitDebug(logName);
    SMBIOSTable::initializeGlobalTable(1);
    loadGroups();
}

uint32_t* vexGetSupportedTables()
{
    auto* const list = new uint32_t[kListSize];
    uint32_t* next = list;
    for (const Collector& entry : collectors)
        *next++ = static_cast<uint32_t>(entry.group->getGroupId());
    *next = VEX_END;
    return list;
}

VexTable* vexGetTable(uint32_t groupId)
{
    VexGroup* collector = collectorOf(groupId);
    return collector == nullptr ? nullptr : collector->getTable();
}

void vexFreeTable(VexTable* table)
{
    delete table;
}

void vexFreeSupportedTables(uint32_t* list)
{
    delete[] list;
}

void vexTerm()
{
    VexTermDebug();
    _vexDebugLevel = 0;
    _vexDebugCategory = 0;
    freeGroups();
    SMBIOSTable::terminateGlobalTable();
}
