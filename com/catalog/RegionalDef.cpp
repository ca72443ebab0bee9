#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/VexEnumValues.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexEnumDef REGIONAL_TZ_PLUS_MINUS[] = {
    {REGIONAL_PLUS,  "+"},
    {REGIONAL_MINUS, "-"},
    {VEX_END,        nullptr},
};

constexpr vexEnumDef REGIONAL_TZ_DAYLIGHT[] = {
    {REGIONAL_DAYLIGHT_TRUE,  "T"},
    {REGIONAL_DAYLIGHT_FALSE, "F"},
    {VEX_END,                 nullptr},
};

// "Local" is the name that reports have always had for the locale.
constexpr vexAttribDef REGIONAL_ATTRS_DEF[] = {
    // id                              name                       type        max  enumeration
    {REGIONAL_LOCALE,                  "Local",                   VEX_STRING, 32,  nullptr},
    {REGIONAL_TIME_ZONE_SECONDS,       "Time Zone Seconds",       VEX_ULONG,  0,   nullptr},
    {REGIONAL_TIME_ZONE_PLUS_MINUS,    "Time Zone Plus Minus",    VEX_ULONG,  0,   REGIONAL_TZ_PLUS_MINUS},
    {REGIONAL_DAYLIGHT,                "Daylight",                VEX_ULONG,  0,   REGIONAL_TZ_DAYLIGHT},
    {REGIONAL_TIME_ZONE_NAME,          "Time Zone Name",          VEX_STRING, 64,  nullptr},
    {REGIONAL_TIME_ZONE_DAYLIGHT_NAME, "Time Zone Daylight Name", VEX_STRING, 64,  nullptr},
    {VEX_END,                          nullptr,                   0,          0,   nullptr},
};
// clang-format on

static_assert(isAscending(REGIONAL_TZ_PLUS_MINUS), "time zone plus minus values: bad row");
static_assert(isAscending(REGIONAL_TZ_DAYLIGHT), "daylight values: bad row");
static_assert(isWellFormed(REGIONAL_ATTRS_DEF), "Regional attributes: bad row");
