#include "linux/RegionalGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

RegionalGroup::RegionalGroup() : VexGroup(GROUP_REGIONAL, 1) {}

VexTable* RegionalGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_REGIONAL, "Regional");
    return nullptr;
}
