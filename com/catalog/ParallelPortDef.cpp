#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef PARALLEL_PORT_ATTRS_DEF[] = {
    // id     name     type        max  enumeration
    {1,       "Index", VEX_ULONG,  0,   nullptr},
    {2,       "Name",  VEX_STRING, 32,  nullptr},
    {VEX_END, nullptr, 0,          0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(PARALLEL_PORT_ATTRS_DEF), "Parallel Port attributes: bad row");
