#include "linux/SMBIOSGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

SMBIOSGroup::SMBIOSGroup() : VexGroup(GROUP_SMBIOS, 1) {}

VexTable* SMBIOSGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_SMBIOS, "!!!LEGSMBIOS");
    return nullptr;
}
