#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef ENCLOSURE_ATTRS_DEF[] = {
    // id     name             type        max  enumeration
    {1,       "Manufacturer",  VEX_STRING, 255, nullptr},
    {2,       "Version",       VEX_STRING, 128, nullptr},
    {3,       "Serial Number", VEX_STRING, 128, nullptr},
    {4,       "Asset Tag",     VEX_STRING, 128, nullptr},
    {5,       "Model",         VEX_STRING, 128, nullptr},
    {VEX_END, nullptr,         0,          0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(ENCLOSURE_ATTRS_DEF), "System Enclosure attributes: bad row");
