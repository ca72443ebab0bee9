#pragma once

#include <cstdint>

#include "com/VexGroup.h"
#include "linux/processor/CpuInfo.h"

/// Collector of group "Lpar": the machine as a single partition.
class LParGroup final : public VexGroup
{
public:
    LParGroup();
    VexTable* getTable() override;
};

/// The number of physical processors: the number that the C library counts, or that of the kernel's list on a machine
/// with several logical processors per package. firmwareFeatures is the firmware's feature word, for a kernel that
/// lists no flags.
int32_t nodeCapacity(int32_t available, const CpuTopology& cpu, uint32_t firmwareFeatures);
