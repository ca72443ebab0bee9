#include "linux/InvVexProv.h"

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

// The registry: one collector per group, null before loadGroups. Its order is the order of creation and destruction.
static OperatingSystemGroup* opSys;
static IpAddressGroup* ipAddr;
static MemoryGroup* memGrp;
static MemoryModulesGroup* memModulesGrp;
static RegionalGroup* regional;
static NetworkAdapterGroup* networkAdapter;
static ProcessorGroup* procGrp;
static ScanInfoGroup* scanInfo;
static StorageGroup* strgGrp;
static UnixSystemParamsGroup* unixParams;
static ComponentIDGroup* compID;
static PartitionGroup* partitionGrp;
static SMBIOSGroup* smbiosGrp;
static PCIDeviceGroup* pci;
static LParGroup* lpar;

static void loadGroups()
{
    opSys = new OperatingSystemGroup;
    ipAddr = new IpAddressGroup;
    memGrp = new MemoryGroup;
    memModulesGrp = new MemoryModulesGroup;
    regional = new RegionalGroup;
    networkAdapter = new NetworkAdapterGroup;
    procGrp = new ProcessorGroup;
    scanInfo = new ScanInfoGroup;
    strgGrp = new StorageGroup;
    unixParams = new UnixSystemParamsGroup;
    compID = new ComponentIDGroup;
    partitionGrp = new PartitionGroup;
    smbiosGrp = new SMBIOSGroup;
    pci = new PCIDeviceGroup;
    lpar = new LParGroup;
}

// The pointers are not cleared: a program ends its one vexInit with one vexTerm.
static void freeGroups()
{
    delete opSys;
    delete ipAddr;
    delete memGrp;
    delete memModulesGrp;
    delete regional;
    delete networkAdapter;
    delete procGrp;
    delete scanInfo;
    delete strgGrp;
    delete unixParams;
    delete compID;
    delete partitionGrp;
    delete smbiosGrp;
    delete pci;
    delete lpar;
}

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
    // The groups in report order. Fixed here: the catalog also describes groups that nothing collects.
    const VexGroup* const reportOrder[] = {compID,   procGrp,      memGrp,         memModulesGrp, opSys,
                                           strgGrp,  ipAddr,       networkAdapter, regional,      unixParams,
                                           scanInfo, partitionGrp, smbiosGrp,      pci,           lpar};
    uint32_t* const list = new uint32_t[32];
    uint32_t* next = list;
    for (const VexGroup* group : reportOrder)
        *next++ = static_cast<uint32_t>(group->getGroupId());
    *next = VEX_END;
    return list;
}

static VexGroup* collectorOf(uint32_t groupId)
{
    switch (groupId) {
    case GROUP_COMPONENTID:
        return compID;
    case GROUP_PROCESSOR:
        return procGrp;
    case GROUP_MEMORY:
        return memGrp;
    case GROUP_OPERATING_SYSTEM:
        return opSys;
    case GROUP_STORAGE:
        return strgGrp;
    case GROUP_IP_ADDRESS:
        return ipAddr;
    case GROUP_NETWORK_ADAPTER:
        return networkAdapter;
    case GROUP_REGIONAL:
        return regional;
    case GROUP_UNIX_SYSTEM_PARAMS:
        return unixParams;
    case GROUP_SCAN_INFO:
        return scanInfo;
    case GROUP_SMBIOS:
        return smbiosGrp;
    case GROUP_PARTITION:
        return partitionGrp;
    case GROUP_PCI_DEVICE:
        return pci;
    case GROUP_MEMORY_MODULES:
        return memModulesGrp;
    case GROUP_LPAR:
        return lpar;
    default:
        return nullptr;
    }
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
