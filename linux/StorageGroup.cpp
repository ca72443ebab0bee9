#include "linux/StorageGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

StorageGroup::StorageGroup() : VexGroup(GROUP_STORAGE, 1) {}

VexTable* StorageGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_STORAGE, "Storage");
    return nullptr;
}
