#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef SCAN_INFO_ATTRS_DEF[] = {
    // id                     name             type          max  enumeration
    {SCAN_INFO_MANUFACTURER,  "Manufacturer",  VEX_STRING,   64,  nullptr},
    {SCAN_INFO_MAJOR_VERSION, "Major Version", VEX_ULONG,    0,   nullptr},
    {SCAN_INFO_MINOR_VERSION, "Minor Version", VEX_ULONG,    0,   nullptr},
    {SCAN_INFO_SCAN_DATE,     "Scan Date",     VEX_DATETIME, 0,   nullptr},
    {SCAN_INFO_BUILD,         "Build",         VEX_STRING,   64,  nullptr},
    {SCAN_INFO_UPTIME,        "Uptime",        VEX_ULONG,    0,   nullptr},
    {VEX_END,                 nullptr,         0,            0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(SCAN_INFO_ATTRS_DEF), "Scan Info attributes: bad row");
