#pragma once

#include "com/VexGroup.h"

/// Collector of group "Memory Modules": one row for every memory module that the firmware lists.
class MemoryModulesGroup final : public VexGroup
{
public:
    MemoryModulesGroup();
    VexTable* getTable() override;
};
