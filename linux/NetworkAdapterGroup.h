#pragma once

#include <cstdint>

#include "com/VexGroup.h"

/// Collector of group "Network Adapter": one row for every listed network interface with a hardware address. An alias
/// such as eth0:1 is listed too and gets a row of its own.
class NetworkAdapterGroup final : public VexGroup
{
public:
    NetworkAdapterGroup();
    VexTable* getTable() override;
};

/// The NetworkAdapterType that an interface's name tells by its prefix; logs it.
uint32_t adapterType(const char* interfaceName);
