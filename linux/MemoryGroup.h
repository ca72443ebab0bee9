#pragma once

#include "com/VexGroup.h"

/// Collector of group "Memory": physical memory, swap space, pages and memory slots.
class MemoryGroup final : public VexGroup
{
public:
    MemoryGroup();
    VexTable* getTable() override;
};
