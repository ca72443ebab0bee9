#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
// "DHCP Enabled" stands between the ids 2 and 3: the order of the table is part of the catalog.
constexpr vexAttribDef IP_ADDR_ATTRS_DEF[] = {
    // id                      name                     type        max  enumeration
    {IP_ADDRESS_INDEX,         "Index",                 VEX_ULONG,  0,   nullptr},
    {IP_ADDRESS_ADDRESS,       "Address",               VEX_STRING, 40,  nullptr},
    {IP_ADDRESS_DHCP_ENABLED,  "DHCP Enabled",          VEX_STRING, 1,   nullptr},
    {IP_ADDRESS_HOSTNAME,      "Hostname",              VEX_STRING, 64,  nullptr},
    {IP_ADDRESS_DOMAIN,        "Domain",                VEX_STRING, 64,  nullptr},
    {IP_ADDRESS_SUBNET,        "Subnet",                VEX_STRING, 40,  nullptr},
    {IP_ADDRESS_GATEWAY,       "Gateway",               VEX_STRING, 40,  nullptr},
    {IP_ADDRESS_PRIMARY_DNS,   "Primary DNS",           VEX_STRING, 40,  nullptr},
    {IP_ADDRESS_SECONDARY_DNS, "Secondary DNS",         VEX_STRING, 40,  nullptr},
    {IP_ADDRESS_PERMANENT_MAC, "Permanent Mac Address", VEX_STRING, 64,  nullptr},
    {VEX_END,                  nullptr,                 0,          0,   nullptr},
};

constexpr uint32_t IP_ADDRESS_KEYS_DEF[] = {IP_ADDRESS_ADDRESS};
// clang-format on

static_assert(isWellFormed(IP_ADDR_ATTRS_DEF), "IP Address attributes: bad row");
static_assert(areKeysOf(IP_ADDRESS_KEYS_DEF, IP_ADDR_ATTRS_DEF), "IP Address: key without attribute");
