#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexEnumDef POINTING_DEVICE_TYPE_ENUM_DEF[] = {
    {1,       "Other"},
    {2,       "Unknown"},
    {3,       "Mouse"},
    {4,       "Track Ball"},
    {5,       "Track Point"},
    {6,       "Glide Point"},
    {7,       "Touch Pad"},
    {8,       "Touch Screen"},
    {9,       "Mouse - Optical Sensor"},
    {VEX_END, nullptr},
};

constexpr vexAttribDef POINT_DEV_ATTRS_DEF[] = {
    // id     name                     type        max  enumeration
    {1,       "Index",                 VEX_ULONG,  0,   nullptr},
    {2,       "ID",                    VEX_STRING, 32,  nullptr},
    {3,       "Type",                  VEX_ULONG,  0,   POINTING_DEVICE_TYPE_ENUM_DEF},
    {4,       "Number of Buttons",     VEX_ULONG,  0,   nullptr},
    {5,       "Handedness",            VEX_ULONG,  0,   nullptr},
    {6,       "Model",                 VEX_STRING, 255, nullptr},
    {7,       "Double Click Interval", VEX_ULONG,  0,   nullptr},
    {8,       "Sensitivity",           VEX_ULONG,  0,   nullptr},
    {VEX_END, nullptr,                 0,          0,   nullptr},
};

constexpr uint32_t POINTING_DEVICE_KEYS_DEF[] = {1, 2};
// clang-format on

static_assert(isAscending(POINTING_DEVICE_TYPE_ENUM_DEF), "type values: bad row");
static_assert(isWellFormed(POINT_DEV_ATTRS_DEF), "Pointing Device attributes: bad row");
static_assert(areKeysOf(POINTING_DEVICE_KEYS_DEF, POINT_DEV_ATTRS_DEF), "Pointing Device: key without attribute");
