#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexEnumDef USB_DEVICE_CLASS_ENUM_DEF[] = {
    {0,       "Reserved"},
    {1,       "Audio"},
    {2,       "Communications"},
    {3,       "Human Interface"},
    {4,       "Monitor"},
    {5,       "Physical Interface"},
    {6,       "Power"},
    {7,       "Printer"},
    {8,       "Storage"},
    {9,       "HUB"},
    {255,     "Vendor Specific"},
    {VEX_END, nullptr},
};

constexpr vexEnumDef USB_DEVICE_IS_HUB_ENUM_DEF[] = {
    {0,       "False"},
    {1,       "True"},
    {VEX_END, nullptr},
};

constexpr vexAttribDef USB_DEVICE_ATTRS_DEF[] = {
    // id     name               type        max  enumeration
    {1,       "Index",           VEX_ULONG,  0,   nullptr},
    {2,       "ID",              VEX_STRING, 32,  nullptr},
    {3,       "Host Controller", VEX_STRING, 64,  nullptr},
    {4,       "USB Version",     VEX_STRING, 32,  nullptr},
    {5,       "Device Class",    VEX_ULONG,  0,   USB_DEVICE_CLASS_ENUM_DEF},
    {6,       "Device Subclass", VEX_ULONG,  0,   nullptr},
    {7,       "Device Address",  VEX_STRING, 16,  nullptr},
    {8,       "Port Number",     VEX_STRING, 16,  nullptr},
    {9,       "Number of Ports", VEX_ULONG,  0,   nullptr},
    {10,      "IsHub",           VEX_ULONG,  0,   USB_DEVICE_IS_HUB_ENUM_DEF},
    {11,      "Parent Address",  VEX_STRING, 16,  nullptr},
    {12,      "Vendor ID",       VEX_ULONG,  0,   nullptr},
    {13,      "Product ID",      VEX_ULONG,  0,   nullptr},
    {14,      "Manufacturer",    VEX_STRING, 128, nullptr},
    {15,      "Product",         VEX_STRING, 255, nullptr},
    {16,      "Serial Number",   VEX_STRING, 64,  nullptr},
    {VEX_END, nullptr,           0,          0,   nullptr},
};

constexpr uint32_t USB_DEVICE_KEYS_DEF[] = {1, 2};
// clang-format on

static_assert(isAscending(USB_DEVICE_CLASS_ENUM_DEF), "device class values: bad row");
static_assert(isAscending(USB_DEVICE_IS_HUB_ENUM_DEF), "ishub values: bad row");
static_assert(isWellFormed(USB_DEVICE_ATTRS_DEF), "USB Device attributes: bad row");
static_assert(areKeysOf(USB_DEVICE_KEYS_DEF, USB_DEVICE_ATTRS_DEF), "USB Device: key without attribute");
