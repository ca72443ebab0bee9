#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef SERIAL_PORT_ATTRS_DEF[] = {
    // id     name     type        max  enumeration
    {1,       "Index", VEX_ULONG,  0,   nullptr},
    {2,       "Name",  VEX_STRING, 32,  nullptr},
    {VEX_END, nullptr, 0,          0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(SERIAL_PORT_ATTRS_DEF), "Serial Port attributes: bad row");
