#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef MEMORY_ATTRS_DEF[] = {
    // id                   name                   type       max  enumeration
    {MEMORY_TOTAL_PHYSICAL, "Total Physical",      VEX_ULONG, 0,   nullptr},
    {MEMORY_FREE_PHYSICAL,  "Free Physical",       VEX_ULONG, 0,   nullptr},
    {MEMORY_TOTAL_VIRTUAL,  "Total Virtual",       VEX_ULONG, 0,   nullptr},
    {MEMORY_FREE_VIRTUAL,   "Free Virtual",        VEX_ULONG, 0,   nullptr},
    {MEMORY_TOTAL_PAGE,     "Total Page",          VEX_ULONG, 0,   nullptr},
    {MEMORY_FREE_PAGE,      "Free Page",           VEX_ULONG, 0,   nullptr},
    {MEMORY_PAGE_SIZE,      "Page Size",           VEX_ULONG, 0,   nullptr},
    {MEMORY_MAX_MEMORY_MB,  "Max Memory MB",       VEX_ULONG, 0,   nullptr},
    {MEMORY_NUM_SLOTS,      "Num Slots Supported", VEX_ULONG, 0,   nullptr},
    {VEX_END,               nullptr,               0,         0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(MEMORY_ATTRS_DEF), "Memory attributes: bad row");
