#pragma once

#include <cstdint>

#include "linux/partition/PartitionNames.h"

class VexTable;

/// One row of the Partition group. The texts are borrowed until the row has been added; sizes are in kilobytes.
struct PartitionRow {
    PartitionType type = PARTITION_TYPE_LOGICAL_DRIVE;
    uint32_t mediaType = PARTITION_MEDIA_UNKNOWN;
    const char* deviceName = "";
    uint32_t fsType = PARTITION_FS_TYPE_UNKNOWN;
    const char* accessPoint = ""; // where the file system comes from, also of a remote one
    const char* mountPoint = "";
    uint32_t totalSize = 0; // reported as the physical size, too
    uint32_t freeSize = 0;
};

/// Makes newTable the one under construction: the rows added from now on go there, numbered from 1.
void beginPartitionRows(VexTable* newTable);

/// Adds a row under the next index, which mounts and swap areas share.
void addPartitionRow(const PartitionRow& partition);
