#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
// There is no attribute 1.
constexpr vexAttribDef LPAR_ATTRS_DEF[] = {
    // id                      name                   type        max  enumeration
    {LPAR_ID,                  "Lpar ID",             VEX_STRING, 32,  nullptr},
    {LPAR_SHAREDPOOL_ID,       "SharedPool ID",       VEX_STRING, 16,  nullptr},
    {LPAR_NODE_CAPACITY,       "Node Capacity",       VEX_FLOAT,  0,   nullptr},
    {LPAR_LPAR_CAPACITY,       "Lpar Capacity",       VEX_FLOAT,  0,   nullptr},
    {LPAR_SHAREDPOOL_CAPACITY, "SharedPool Capacity", VEX_FLOAT,  0,   nullptr},
    {VEX_END,                  nullptr,               0,          0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(LPAR_ATTRS_DEF), "Lpar attributes: bad row");
