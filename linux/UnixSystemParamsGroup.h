#pragma once

#include "com/VexGroup.h"

/// Collector of group "UNIX System Params": boot time, run level and host name.
class UnixSystemParamsGroup final : public VexGroup
{
public:
    UnixSystemParamsGroup();
    VexTable* getTable() override;
};
