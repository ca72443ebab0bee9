#pragma once

#include "com/VexGroup.h"

/// Collector of group "IP Address": one row for every configured IPv4 interface but the loopback.
class IpAddressGroup final : public VexGroup
{
public:
    IpAddressGroup();
    VexTable* getTable() override;
};

/// Splits a host's official name at its first dot into host name and domain, both cut to 255 bytes; a name without a
/// dot is all host name and leaves the domain alone.
void splitHostName(const char* name, char (&hostName)[256], char (&domain)[256]);
