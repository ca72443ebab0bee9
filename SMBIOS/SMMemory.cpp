#include "SMBIOS/SMMemory.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "SMBIOS/SMBIOSTable.h"

namespace
{

// The lines of these queries go with every group that may ask.
constexpr uint32_t kQueryMask = DEBUG_GENERAL | DEBUG_COMPONENTID;

// The memory controller (type 5): slots and the largest module's size as a power of two.
void addController(const SMBIOSTable5Data& controller, unsigned int* maxModuleSizeMB, unsigned int* slots)
{
    *slots = controller.getNumAssocMemorySlots();
    const int exponent = controller.getMaximumMemoryModuleSize();
    *maxModuleSizeMB = exponent != 0 && exponent < 32 ? 1U << exponent : 0;
    const unsigned int installed = SM_getBiggestMemoryModule_6();
    VEX_LOG(kQueryMask, VEX_LEVEL_DETAIL,
            "\n  Table 5: Max Module Size: %i Slots: %i\n Table 6 MaxModuleSize (calc) found: %i",
            static_cast<int>(*maxModuleSizeMB), static_cast<int>(*slots), static_cast<int>(installed));
    *maxModuleSizeMB = std::max(*maxModuleSizeMB, installed);
}

// The size of one module of an array of capacity MB. A capacity that is a power of two may be a limit of the board
// rather than of a slot: the share of a slot counts only when no larger module is in place.
unsigned int moduleSizeMB(unsigned int capacity, unsigned int slots)
{
    const unsigned int perSlot = capacity / slots;
    VEX_LOG(kMemoryModuleMask, VEX_LEVEL_DETAIL, "\nraw maxModuleSizeMB = %iMB, divided by slots: %iMB",
            static_cast<int>(capacity), static_cast<int>(perSlot));
    if (isPowerOf2(capacity) == 0)
        return perSlot;
    const unsigned int biggest = SM_getBiggestMemoryModule_17() >> 10;
    VEX_LOG(kMemoryModuleMask, VEX_LEVEL_DETAIL, "\nbiggestModule found (SMB): %iMB", static_cast<int>(biggest));
    return isPowerOf2(perSlot) != 0 && perSlot >= biggest ? perSlot : capacity;
}

// The memory array (type 16): devices and capacity.
void addArray(const SMBIOSTable16Data& array, unsigned int* maxModuleSizeMB, unsigned int* slots)
{
    if (*slots == 0)
        *slots = array.getNumMemDevices();
    if (*slots != 0)
        *maxModuleSizeMB = std::max(*maxModuleSizeMB, moduleSizeMB(array.getMaxCapacity() >> 10, *slots));
    VEX_LOG(kQueryMask, VEX_LEVEL_DETAIL, "\n  Table 16: Max Module Size: %i Slots: %i",
            static_cast<int>(*maxModuleSizeMB), static_cast<int>(*slots));
}

} // namespace

int isPowerOf2(unsigned int n)
{
    return std::has_single_bit(n) ? 1 : 0;
}

unsigned int SM_getBiggestMemoryModule_17()
{
    const SMBIOSTable* table = availableSMBIOSTable();
    if (table == nullptr || table->getTable17Total() == 0)
        return 0;
    VEX_LOG(kQueryMask, VEX_LEVEL_DETAIL, "\n  SMBIOS Table 17 is available.");
    int biggest = 0;
    for (int i = 0; i < table->getTable17Total(); ++i)
        biggest = std::max(biggest, table->getTable17(i)->getSizeKB());
    return static_cast<unsigned int>(biggest);
}

unsigned int SM_getBiggestMemoryModule_6()
{
    const SMBIOSTable* table = availableSMBIOSTable();
    if (table == nullptr || table->getTable6Total() == 0)
        return 0;
    VEX_LOG(kQueryMask, VEX_LEVEL_DETAIL, "\n  SMBIOS Table 6 is available.");
    unsigned int biggest = 0;
    for (int i = 0; i < table->getTable6Total(); ++i) {
        const int size = table->getTable6(i)->getInstalledSizeMB();
        if (size != -1)
            biggest = std::max(biggest, static_cast<unsigned int>(size));
    }
    return biggest;
}

int getMemorySpecs(unsigned int* maxModuleSizeMB, unsigned int* slots)
{
    *maxModuleSizeMB = *slots = 0;
    const SMBIOSTable* table = availableSMBIOSTable();
    if (table == nullptr)
        return 0;
    const SMBIOSTable5Data* controller = table->getTable5();
    const SMBIOSTable16Data* array = table->getTable16();
    if (controller != nullptr)
        VEX_LOG(kQueryMask, VEX_LEVEL_DETAIL, "\n  SMBIOS Table 5 is available.");
    if (array != nullptr)
        VEX_LOG(kQueryMask, VEX_LEVEL_DETAIL, "\n  SMBIOS Table 16 is available.");
    if (controller != nullptr)
        addController(*controller, maxModuleSizeMB, slots);
    if (array != nullptr)
        addArray(*array, maxModuleSizeMB, slots);
    return *slots + *maxModuleSizeMB != 0 ? 1 : 0;
}
