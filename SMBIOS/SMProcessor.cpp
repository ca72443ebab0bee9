#include "SMBIOS/SMProcessor.h"

#include "SMBIOS/SMBIOSTable.h"
#include "com/VexEnumValues.h"

namespace
{

// A higher number is taken for no clock.
constexpr unsigned kMaxExternalClock = 2000; // MHz

const SMBIOSTable4Data* firstProcessor()
{
    const SMBIOSTable* table = availableSMBIOSTable();
    return table == nullptr ? nullptr : table->getTable4(0);
}

} // namespace

int SM_Processor(unsigned short* currentSpeed, unsigned short* externalClock, unsigned short* upgrade,
                 int* featureFlags)
{
    *currentSpeed = *externalClock = *upgrade = 0;
    const SMBIOSTable4Data* processor = firstProcessor();
    if (processor == nullptr)
        return 0;
    *currentSpeed = processor->getCurrentSpeed();
    if (processor->getExternalClock() <= kMaxExternalClock)
        *externalClock = processor->getExternalClock();
    if (processor->getUpgrade() <= PROCESSOR_INTERFACE_SOCKET_940)
        *upgrade = processor->getUpgrade();
    if (featureFlags != nullptr)
        *featureFlags = static_cast<int>(processor->getEDX());
    return 1;
}

int SM_ProcessorFamily()
{
    const SMBIOSTable4Data* processor = firstProcessor();
    return processor == nullptr ? 0 : processor->getFamily();
}

int SM_ProcessorCount()
{
    const SMBIOSTable* table = availableSMBIOSTable();
    return table == nullptr ? 0 : table->getTable4Total();
}

int SM_PopulatedProcessorCount()
{
    const SMBIOSTable* table = availableSMBIOSTable();
    return table == nullptr ? 0 : table->getTable4PopulatedTotal();
}
