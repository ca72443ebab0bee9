#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef MONITOR_ATTRS_DEF[] = {
    // id     name                       type        max  enumeration
    {1,       "Index",                   VEX_ULONG,  0,   nullptr},
    {2,       "ID",                      VEX_STRING, 32,  nullptr},
    {3,       "Manufacturer Codename",   VEX_STRING, 16,  nullptr},
    {4,       "Name",                    VEX_STRING, 32,  nullptr},
    {5,       "Week Manufactured",       VEX_ULONG,  0,   nullptr},
    {6,       "Year Manufactured",       VEX_ULONG,  0,   nullptr},
    {7,       "Serial Number",           VEX_STRING, 32,  nullptr},
    {8,       "Approx Size Inches",      VEX_ULONG,  0,   nullptr},
    {9,       "Min Vert Scan Freq Hz",   VEX_ULONG,  0,   nullptr},
    {10,      "Max Vert Scan Freq Hz",   VEX_ULONG,  0,   nullptr},
    {11,      "Min Horiz Scan Freq kHz", VEX_ULONG,  0,   nullptr},
    {12,      "Max Horiz Scan Freq kHz", VEX_ULONG,  0,   nullptr},
    {13,      "Pixel Clock MHz",         VEX_ULONG,  0,   nullptr},
    {VEX_END, nullptr,                   0,          0,   nullptr},
};

constexpr uint32_t MONITOR_KEYS_DEF[] = {1, 2};
// clang-format on

static_assert(isWellFormed(MONITOR_ATTRS_DEF), "Monitor attributes: bad row");
static_assert(areKeysOf(MONITOR_KEYS_DEF, MONITOR_ATTRS_DEF), "Monitor: key without attribute");
