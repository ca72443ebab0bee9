// Sources: the mount table in /etc/mtab, which lags behind the kernel where mount keeps it as a file of its own;
// statvfs of every mount point for the sizes; /proc/swaps.

#include "linux/PartitionGroup.h"

#include <memory>
#include <mntent.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/partition/PartitionMounts.h"
#include "linux/partition/PartitionRows.h"
#include "linux/partition/PartitionSwaps.h"

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
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    beginPartitionRows(table);
    addMountEntries(mountTable.get());
    mountTable.reset();
    VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\n..Adding swap partitions...\n");
    addSwapPartitions();
    return table;
}
