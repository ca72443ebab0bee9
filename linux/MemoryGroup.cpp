#include "linux/MemoryGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

MemoryGroup::MemoryGroup() : VexGroup(GROUP_MEMORY, 1) {}

VexTable* MemoryGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_MEMORY, "Memory");
    return nullptr;
}
