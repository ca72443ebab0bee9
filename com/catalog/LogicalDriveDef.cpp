#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef LOG_DRIVE_ATTRS_DEF[] = {
    // id     name           type        max  enumeration
    {1,       "Index",       VEX_ULONG,  0,   nullptr},
    {2,       "Type",        VEX_ULONG,  0,   nullptr},
    {3,       "Name",        VEX_STRING, 255, nullptr},
    {4,       "Device Name", VEX_STRING, 255, nullptr},
    {5,       "Total Size",  VEX_ULONG,  0,   nullptr},
    {6,       "Free Size",   VEX_ULONG,  0,   nullptr},
    {VEX_END, nullptr,       0,          0,   nullptr},
};

constexpr uint32_t LOGICAL_DRIVE_KEYS_DEF[] = {1};
// clang-format on

static_assert(isWellFormed(LOG_DRIVE_ATTRS_DEF), "Logical Drive attributes: bad row");
static_assert(areKeysOf(LOGICAL_DRIVE_KEYS_DEF, LOG_DRIVE_ATTRS_DEF), "Logical Drive: key without attribute");
