#include "linux/OperatingSystemGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

OperatingSystemGroup::OperatingSystemGroup() : VexGroup(GROUP_OPERATING_SYSTEM, 1) {}

VexTable* OperatingSystemGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_OPERATING_SYSTEM, "OperatingSystem");
    return nullptr;
}
