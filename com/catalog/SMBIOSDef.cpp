#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/VexEnumValues.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
// SMBIOS chassis types.
constexpr vexEnumDef VEX_ATTRIB_SMBIOS_ENCLOSURE_TYPE_ENUM_DEF[] = {
#include "com/catalog/ChassisTypes.inc"
    {VEX_END, nullptr},
};

// States of the power-on password in the firmware's hardware-security record.
constexpr vexEnumDef HWSEC_POP_ENUM_DEF[] = {
    {0,                                   "Disabled"},
    {1,                                   "Enabled"},
    {SMBIOS_POWERON_PASSWORD_UNSUPPORTED, "Unsupported"},
    {SMBIOS_POWERON_PASSWORD_UNKNOWN,     "Unknown"},
    {VEX_END,                             nullptr},
};

constexpr vexAttribDef SMBIOS_ATTRS_DEF[] = {
    // id                            name                       type        max  enumeration
    {SMBIOS_BIOS_VENDOR,             "BIOS Vendor",             VEX_STRING, 64,  nullptr},
    {SMBIOS_BIOS_VERSION,            "BIOS Version",            VEX_STRING, 64,  nullptr},
    {SMBIOS_BIOS_DATE,               "BIOS Date",               VEX_STRING, 16,  nullptr},
    {SMBIOS_BIOS_SIZE,               "BIOS Size",               VEX_STRING, 8,   nullptr},
    {SMBIOS_SYSTEM_MANUFACTURER,     "System Manufacturer",     VEX_STRING, 64,  nullptr},
    {SMBIOS_SYSTEM_PRODUCT_NAME,     "System Product Name",     VEX_STRING, 64,  nullptr},
    {SMBIOS_SYSTEM_VERSION,          "System Version",          VEX_STRING, 64,  nullptr},
    {SMBIOS_SYSTEM_SERIAL_NUMBER,    "System Serial Number",    VEX_STRING, 64,  nullptr},
    {SMBIOS_SYSTEM_UUID,             "System UUID",             VEX_STRING, 36,  nullptr},
    {SMBIOS_BOARD_MANUFACTURER,      "Board Manufacturer",      VEX_STRING, 64,  nullptr},
    {SMBIOS_BOARD_PRODUCT,           "Board Product",           VEX_STRING, 64,  nullptr},
    {SMBIOS_BOARD_VERSION,           "Board Version",           VEX_STRING, 64,  nullptr},
    {SMBIOS_BOARD_SERIAL_NUMBER,     "Board Serial Number",     VEX_STRING, 64,  nullptr},
    {SMBIOS_ENCLOSURE_MANUFACTURER,  "Enclosure Manufacturer",  VEX_STRING, 64,  nullptr},
    {SMBIOS_ENCLOSURE_TYPE,          "Enclosure Type",          VEX_ULONG,  0,   VEX_ATTRIB_SMBIOS_ENCLOSURE_TYPE_ENUM_DEF},
    {SMBIOS_ENCLOSURE_VERSION,       "Enclosure Version",       VEX_STRING, 64,  nullptr},
    {SMBIOS_ENCLOSURE_SERIAL_NUMBER, "Enclosure Serial Number", VEX_STRING, 64,  nullptr},
    {SMBIOS_ENCLOSURE_ASSET_TAG,     "Enclosure Asset Tag",     VEX_STRING, 64,  nullptr},
    {SMBIOS_ID,                      "ID",                      VEX_STRING, 32,  nullptr},
    {SMBIOS_POWERON_PASSWORD,        "PowerOn Password",        VEX_ULONG,  0,   HWSEC_POP_ENUM_DEF},
    {VEX_END,                        nullptr,                   0,          0,   nullptr},
};
// clang-format on

static_assert(isAscending(VEX_ATTRIB_SMBIOS_ENCLOSURE_TYPE_ENUM_DEF), "enclosure type values: bad row");
static_assert(isAscending(HWSEC_POP_ENUM_DEF), "poweron password values: bad row");
static_assert(isWellFormed(SMBIOS_ATTRS_DEF), "SMBIOS attributes: bad row");
