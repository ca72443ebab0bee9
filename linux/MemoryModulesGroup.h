#pragma once

#include "com/VexGroup.h"

/// Collector of group "Memory Modules": one row for every memory module that the firmware lists.
class MemoryModulesGroup final : public VexGroup
{
public:
    MemoryModulesGroup();
    /// Null when the firmware lists no modules.
    VexTable* getTable() override;
};

/// The memory that the kernel manages, as sysinfo counts it, divided by 1024; the count's unit is not looked at.
unsigned long totalPhysMemKB();
