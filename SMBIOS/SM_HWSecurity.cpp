#include "SMBIOS/SM_HWSecurity.h"

#include "SMBIOS/SMBIOSTable.h"
#include "com/VexEnumValues.h"

int SM_HWSecurity(unsigned short* powerOn, unsigned short* other)
{
    *powerOn = *other = SMBIOS_POWERON_PASSWORD_UNKNOWN;
    const SMBIOSTable* table = availableSMBIOSTable();
    const SMBIOSTable24Data* security = table == nullptr ? nullptr : table->getTable24();
    if (security == nullptr)
        return 1;
    // The byte is widened with its sign and not masked: from 0x80 on, the power-on state is above 3.
    const auto settings = static_cast<unsigned short>(security->getHWSecStatus());
    *powerOn = static_cast<unsigned short>(settings >> 6);
    *other = static_cast<unsigned short>(settings >> 2);
    return 0;
}
