#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef VIDEO_ATTRS_DEF[] = {
    // id     name                 type          max  enumeration
    {1,       "Index",             VEX_ULONG,    0,   nullptr},
    {2,       "ID",                VEX_STRING,   32,  nullptr},
    {3,       "Adapter Name",      VEX_STRING,   255, nullptr},
    {4,       "Architecture",      VEX_ULONG,    0,   nullptr},
    {5,       "Colors",            VEX_ULONG,    0,   nullptr},
    {6,       "Horizontal",        VEX_ULONG,    0,   nullptr},
    {7,       "Vertical",          VEX_ULONG,    0,   nullptr},
    {8,       "Memory",            VEX_ULONG,    0,   nullptr},
    {9,       "Chip Type",         VEX_STRING,   255, nullptr},
    {10,      "DAC Type",          VEX_STRING,   255, nullptr},
    {11,      "Bios Version",      VEX_STRING,   255, nullptr},
    {12,      "Bios Release Date", VEX_DATETIME, 0,   nullptr},
    {VEX_END, nullptr,             0,            0,   nullptr},
};

constexpr uint32_t VIDEO_KEYS_DEF[] = {1, 2};
// clang-format on

static_assert(isWellFormed(VIDEO_ATTRS_DEF), "Video attributes: bad row");
static_assert(areKeysOf(VIDEO_KEYS_DEF, VIDEO_ATTRS_DEF), "Video: key without attribute");
