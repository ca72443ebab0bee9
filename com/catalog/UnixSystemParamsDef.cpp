#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef UNIX_PAR_ATTRS_DEF[] = {
    // id                               name              type          max  enumeration
    {UNIX_SYSTEM_PARAMS_BOOT_TIME,      "Boot Time",      VEX_DATETIME, 0,   nullptr},
    {UNIX_SYSTEM_PARAMS_RUN_LEVEL,      "Run Level",      VEX_ULONG,    0,   nullptr},
    {UNIX_SYSTEM_PARAMS_HOSTNAME,       "Hostname",       VEX_STRING,   255, nullptr},
    {UNIX_SYSTEM_PARAMS_COMPUTER_ALIAS, "Computer Alias", VEX_STRING,   32,  nullptr},
    {VEX_END,                           nullptr,          0,            0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(UNIX_PAR_ATTRS_DEF), "UNIX System Params attributes: bad row");
