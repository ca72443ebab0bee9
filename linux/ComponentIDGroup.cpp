#include "linux/ComponentIDGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

ComponentIDGroup::ComponentIDGroup() : VexGroup(GROUP_COMPONENTID, 1) {}

VexTable* ComponentIDGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_COMPONENTID, "ComponentID");
    return nullptr;
}
