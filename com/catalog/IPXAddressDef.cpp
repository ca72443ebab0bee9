#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef IPX_ADDR_ATTRS_DEF[] = {
    // id     name               type        max  enumeration
    {1,       "Index",           VEX_ULONG,  0,   nullptr},
    {2,       "Address",         VEX_STRING, 32,  nullptr},
    {3,       "Network Number",  VEX_STRING, 32,  nullptr},
    {4,       "Node Address",    VEX_STRING, 32,  nullptr},
    {5,       "Link Speed",      VEX_ULONG,  0,   nullptr},
    {6,       "Max Packet Size", VEX_ULONG,  0,   nullptr},
    {VEX_END, nullptr,           0,          0,   nullptr},
};

constexpr uint32_t IPX_ADDRESS_KEYS_DEF[] = {1};
// clang-format on

static_assert(isWellFormed(IPX_ADDR_ATTRS_DEF), "IPX Address attributes: bad row");
static_assert(areKeysOf(IPX_ADDRESS_KEYS_DEF, IPX_ADDR_ATTRS_DEF), "IPX Address: key without attribute");
