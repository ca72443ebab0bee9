#pragma once

#include "com/VexGroup.h"

/// Collector of group "Partition": one row for every mounted file system and swap area.
class PartitionGroup final : public VexGroup
{
public:
    PartitionGroup();
    VexTable* getTable() override;
};
