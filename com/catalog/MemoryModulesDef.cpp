#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef MEMORY_MODULES_ATTRS_DEF[] = {
    // id                               name                  type        max  enumeration
    {MEMORY_MODULES_INDEX,              "Index",              VEX_ULONG,  0,   nullptr},
    {MEMORY_MODULES_MODULE_SIZE_MB,     "Module Size MB",     VEX_ULONG,  0,   nullptr},
    {MEMORY_MODULES_MAX_MODULE_SIZE_MB, "Max Module Size MB", VEX_ULONG,  0,   nullptr},
    {MEMORY_MODULES_SOCKET_NAME,        "Socket Name",        VEX_STRING, 24,  nullptr},
    {MEMORY_MODULES_PACKAGING,          "Packaging",          VEX_STRING, 16,  nullptr},
    {MEMORY_MODULES_MEMORY_TYPE,        "Memory Type",        VEX_STRING, 48,  nullptr},
    {VEX_END,                           nullptr,              0,          0,   nullptr},
};

constexpr uint32_t MEMORY_MODULES_KEYS_DEF[] = {MEMORY_MODULES_INDEX};
// clang-format on

static_assert(isWellFormed(MEMORY_MODULES_ATTRS_DEF), "Memory Modules attributes: bad row");
static_assert(areKeysOf(MEMORY_MODULES_KEYS_DEF, MEMORY_MODULES_ATTRS_DEF), "Memory Modules: key without attribute");
