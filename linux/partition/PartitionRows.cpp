#include "linux/partition/PartitionRows.h"

#include "com/VexAttribIds.h"
#include "com/VexTable.h"

namespace
{

VexTable* table = nullptr; // under construction
uint32_t i = 0;            // index of the row added last

} // namespace

void beginPartitionRows(VexTable* newTable)
{
    table = newTable;
    i = 0;
}

void addPartitionRow(const PartitionRow& partition)
{
    auto* const row = new VexTableRow;
    row->addULong(PARTITION_INDEX, ++i);
    row->addULong(PARTITION_TYPE, partition.type);
    row->addULong(PARTITION_MEDIA_TYPE, partition.mediaType);
    row->addString(PARTITION_DEVICE_NAME, partition.deviceName);
    row->addULong(PARTITION_PHYSICAL_SIZE, partition.totalSize);
    row->addULong(PARTITION_FS_TYPE, partition.fsType);
    row->addString(PARTITION_FS_ACCESS_POINT, partition.accessPoint);
    row->addString(PARTITION_FS_MOUNT_POINT, partition.mountPoint);
    row->addULong(PARTITION_FS_TOTAL_SIZE, partition.totalSize);
    row->addULong(PARTITION_FS_FREE_SIZE, partition.freeSize);
    table->addRow(row);
}
