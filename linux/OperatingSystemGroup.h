#pragma once

#include "com/VexGroup.h"

/// Collector of group "Operating System": the distribution, the kernel's version, the architecture and the messages
/// locale.
class OperatingSystemGroup final : public VexGroup
{
public:
    OperatingSystemGroup();
    VexTable* getTable() override;
};
