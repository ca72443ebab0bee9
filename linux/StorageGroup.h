#pragma once

#include "com/VexGroup.h"

/// Collector of group "Storage": one row for every physical or logical drive.
class StorageGroup final : public VexGroup
{
public:
    StorageGroup();
    VexTable* getTable() override;
};
