#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
// Attached to a text attribute, where enumeration texts never apply: kept for readers of the catalog.
constexpr vexEnumDef MODEM_DEVTYPE_ENUMS_DEF[] = {
    {1,       "External Modem"},
    {2,       "Internal Modem"},
    {3,       "PCMCIA Modem"},
    {4,       "Other"},
    {VEX_END, nullptr},
};

constexpr vexAttribDef MODEM_ATTRS_DEF[] = {
    // id     name             type        max  enumeration
    {1,       "Index",         VEX_ULONG,  0,   nullptr},
    {2,       "ID",            VEX_STRING, 32,  nullptr},
    {3,       "Description",   VEX_STRING, 64,  nullptr},
    {4,       "Manufacturer",  VEX_STRING, 64,  nullptr},
    {5,       "Provider Name", VEX_STRING, 32,  nullptr},
    {6,       "Modem Type",    VEX_STRING, 32,  MODEM_DEVTYPE_ENUMS_DEF},
    {7,       "Port",          VEX_STRING, 16,  nullptr},
    {8,       "Port Speed",    VEX_ULONG,  0,   nullptr},
    {9,       "Port Settings", VEX_STRING, 16,  nullptr},
    {10,      "User Init",     VEX_STRING, 128, nullptr},
    {11,      "INF File",      VEX_STRING, 32,  nullptr},
    {12,      "INF Section",   VEX_STRING, 32,  nullptr},
    {VEX_END, nullptr,         0,          0,   nullptr},
};

constexpr uint32_t MODEM_KEYS_DEF[] = {1, 2};
// clang-format on

static_assert(isAscending(MODEM_DEVTYPE_ENUMS_DEF), "modem type values: bad row");
static_assert(isWellFormed(MODEM_ATTRS_DEF), "Modem attributes: bad row");
static_assert(areKeysOf(MODEM_KEYS_DEF, MODEM_ATTRS_DEF), "Modem: key without attribute");
