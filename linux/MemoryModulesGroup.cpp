#include "linux/MemoryModulesGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

MemoryModulesGroup::MemoryModulesGroup() : VexGroup(GROUP_MEMORY_MODULES, 1) {}

VexTable* MemoryModulesGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_MEMORY_MODULES, "Memory Modules");
    return nullptr;
}
