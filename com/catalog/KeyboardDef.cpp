#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef KEYBOARD_ATTRS_DEF[] = {
    // id     name                       type        max  enumeration
    {1,       "Type",                    VEX_STRING, 255, nullptr},
    {2,       "Sub Type",                VEX_STRING, 64,  nullptr},
    {3,       "Code Page",               VEX_STRING, 64,  nullptr},
    {4,       "Number of Function Keys", VEX_ULONG,  0,   nullptr},
    {5,       "Characters per Second",   VEX_ULONG,  0,   nullptr},
    {6,       "Repeat Delay",            VEX_ULONG,  0,   nullptr},
    {VEX_END, nullptr,                   0,          0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(KEYBOARD_ATTRS_DEF), "Keyboard attributes: bad row");
