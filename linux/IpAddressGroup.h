#pragma once

#include "com/VexGroup.h"

/// Collector of group "IP Address": one row for every configured IPv4 interface but the loopback.
class IpAddressGroup final : public VexGroup
{
public:
    IpAddressGroup();
    VexTable* getTable() override;
};
