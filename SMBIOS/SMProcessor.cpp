#include "SMBIOS/SMProcessor.h"

#include "SMBIOS/SMBIOSTable.h"

static const SMBIOSTable4Data* firstProcessor()
{
    const SMBIOSTable* table = availableSMBIOSTable();
    return table == nullptr ? nullptr : table->getTable4(0);
}

int SM_Processor(unsigned short* currentSpeed, unsigned short* externalClock, unsigned short* upgrade,
                 int* featureFlags)
{
    *currentSpeed = *externalClock = *upgrade = 0;
    const SMBIOSTable4Data* processor = firstProcessor();
    if (processor == nullptr)
        return 0;
    *currentSpeed = processor->getCurrentSpeed();
    if (processor->getExternalClock() <= 2000)
        *externalClock = processor->getExternalClock();
    if (processor->getUpgrade() <= 17)
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
