#pragma once

#include "com/VexGroup.h"

/// Collector of group "Network Adapter": one row for every interface with a hardware address.
class NetworkAdapterGroup final : public VexGroup
{
public:
    NetworkAdapterGroup();
    VexTable* getTable() override;
};
