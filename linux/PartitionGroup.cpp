#include "linux/PartitionGroup.h"

#include <memory>
#include <mntent.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/PartitionMounts.h"
#include "linux/PartitionRows.h"
#include "linux/PartitionSwaps.h"

namespace
{

struct MountTableDeleter {
    void operator()(FILE* mountTable) const { endmntent(mountTable); }
};
using MountTable = std::unique_ptr<FILE, MountTableDeleter>;

} // namespace

PartitionGroup::PartitionGroup() : VexGroup(GROUP_PARTITION, 1) {}

VexTable* PartitionGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_PARTITION, "Partition Group");
    MountTable mountTable(setmntent("/etc/mtab", "r"));
    if (mountTable == nullptr)
        return nullptr;
    auto* table = new VexTable(getGroupId(), getGroupVersion());
    beginPartitionRows(table);
    addMountEntries(mountTable.get());
    mountTable.reset();
    VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\n..Adding swap partitions...\n");
    addSwapPartitions();
    return table;
}
