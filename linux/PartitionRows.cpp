#include "linux/PartitionRows.h"

#include "com/VexAttribIds.h"
#include "com/VexTable.h"

static VexTable* table = nullptr; // under construction
static uint32_t i = 0;            // index of the row added last

void beginPartitionRows(VexTable* newTable)
{
    table = newTable;
    i = 0;
}

void addPartitionRow(const PartitionRow& partition)
{
    auto* row = new VexTableRow;
    row->addULong(PART_INDEX, ++i);
    row->addULong(PART_TYPE, partition.type);
    row->addULong(PART_MEDIA_TYPE, partition.mediaType);
    row->addString(PART_DEVICE_NAME, partition.deviceName);
    row->addULong(PART_PHYSICAL_SIZE, partition.totalSize);
    row->addULong(PART_FS_TYPE, partition.fsType);
    row->addString(PART_FS_ACCESS_POINT, partition.accessPoint);
    row->addString(PART_FS_MOUNT_POINT, partition.mountPoint);
    row->addULong(PART_FS_TOTAL_SIZE, partition.totalSize);
    row->addULong(PART_FS_FREE_SIZE, partition.freeSize);
    table->addRow(row);
}
