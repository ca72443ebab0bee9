#include "linux/PartitionGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

PartitionGroup::PartitionGroup() : VexGroup(GROUP_PARTITION, 1) {}

VexTable* PartitionGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_PARTITION, "Partition Group");
    return nullptr;
}
