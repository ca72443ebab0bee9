#pragma once

#include <cstdint>

// The group catalog: fixed, read-only tables that name every group and attribute of the inventory model. Collectors
// use ids only; the report and the debug log look names, types, keys and enumeration texts up here. Every table ends
// with a row whose first word is VEX_END; key lists have no terminator, their group row counts them.

/// Ends every catalog table and every list of group ids.
constexpr uint32_t VEX_END = 0xFFFFFFFF;

/// Type codes of attribute values. A value record carries one of them, a catalog row names the expected one.
enum VexType : uint32_t {
    VEX_UCHAR = 1,
    VEX_USHORT = 2,
    VEX_ULONG = 3,
    VEX_UQUAD = 4,
    VEX_FLOAT = 5,
    VEX_DOUBLE = 6,
    VEX_STRING = 7,
    VEX_OCTETSTRING = 8,
    VEX_DATETIME = 9,
};

/// One enumeration pair. The terminator has the value VEX_END and a null text.
struct vexEnumDef {
    uint32_t value;
    const char* text;
};

/// One attribute of a group. The terminator has the id VEX_END and every other field 0.
struct vexAttribDef {
    uint32_t id;             // unique within its group
    const char* name;        // the report's element name is made from it
    uint32_t type;           // VexType
    uint32_t maxLength;      // characters of a VEX_STRING, 0 for other types
    const vexEnumDef* enums; // texts of a VEX_ULONG's values, or null
};

/// One group. The terminator has the id VEX_END and every other field 0.
struct vexGroupDef {
    uint32_t id;
    const char* name;
    const vexAttribDef* attributes;
    const uint32_t* keys; // ids of the key attributes, or null
    uint32_t numKeys;
    uint32_t version;
    uint32_t debugMask; // the group's category bit in the debug log
};

extern const vexGroupDef GROUPS_DEF[];

// Collected groups: attributes, then keys and enumerations where there are any (com/catalog/<Group>Def.cpp).
extern const vexAttribDef COMPONENTID_ATTRS_DEF[];

extern const vexAttribDef PROCESSOR_ATTRS_DEF[];
extern const uint32_t PROCESSOR_KEYS_DEF[];
extern const vexEnumDef PROCESSOR_FAMILY_ENUM_DEF[];
extern const vexEnumDef PROCESSOR_INTERFACE_ENUM_DEF[];

extern const vexAttribDef MEMORY_ATTRS_DEF[];

extern const vexAttribDef OPER_SYS_ATTRS_DEF[];
extern const vexEnumDef OS_TYPE_ENUM_DEF[];

extern const vexAttribDef STORAGE_ATTRS_DEF[];
extern const uint32_t STORAGE_KEYS_DEF[];
extern const vexEnumDef STORAGE_TYPE_ENUM_DEF[];
extern const vexEnumDef STORAGE_SECURITY_ENABLED_ENUM_DEF[];

extern const vexAttribDef IP_ADDR_ATTRS_DEF[];
extern const uint32_t IP_ADDRESS_KEYS_DEF[];

extern const vexAttribDef NET_ADPTR_ATTRS_DEF[];
extern const uint32_t NETWORK_ADAPTER_KEYS_DEF[];
extern const vexEnumDef ADAPTER_TYPE_ENUM_DEF[];

extern const vexAttribDef REGIONAL_ATTRS_DEF[];
extern const vexEnumDef REGIONAL_TZ_PLUS_MINUS[];
extern const vexEnumDef REGIONAL_TZ_DAYLIGHT[];

extern const vexAttribDef UNIX_PAR_ATTRS_DEF[];

extern const vexAttribDef SCAN_INFO_ATTRS_DEF[];

extern const vexAttribDef SMBIOS_ATTRS_DEF[];
extern const vexEnumDef VEX_ATTRIB_SMBIOS_ENCLOSURE_TYPE_ENUM_DEF[];
extern const vexEnumDef HWSEC_POP_ENUM_DEF[];

extern const vexAttribDef PART_ATTRS_DEF[];
extern const uint32_t PARTITION_KEYS_DEF[];
extern const vexEnumDef PART_TYPE_ENUM_DEF[];
extern const vexEnumDef PART_MEDIA_TYPE_ENUM_DEF[];
extern const vexEnumDef FILE_SYSTEM_TYPE_ENUM_DEF[];

extern const vexAttribDef PCI_DEVICE_ATTRS_DEF[];
extern const uint32_t PCI_DEVICE_KEYS_DEF[];

extern const vexAttribDef MEMORY_MODULES_ATTRS_DEF[];
extern const uint32_t MEMORY_MODULES_KEYS_DEF[];

extern const vexAttribDef LPAR_ATTRS_DEF[];

// Groups that the model knows and this platform does not collect.
extern const vexAttribDef DSK_PART_ATTRS_DEF[];
extern const uint32_t DISK_PARTITION_KEYS_DEF[];

extern const vexAttribDef POINT_DEV_ATTRS_DEF[];
extern const uint32_t POINTING_DEVICE_KEYS_DEF[];
extern const vexEnumDef POINTING_DEVICE_TYPE_ENUM_DEF[];

extern const vexAttribDef KEYBOARD_ATTRS_DEF[];

extern const vexAttribDef LOG_DRIVE_ATTRS_DEF[];
extern const uint32_t LOGICAL_DRIVE_KEYS_DEF[];

extern const vexAttribDef IPX_ADDR_ATTRS_DEF[];
extern const uint32_t IPX_ADDRESS_KEYS_DEF[];

extern const vexAttribDef VIDEO_ATTRS_DEF[];
extern const uint32_t VIDEO_KEYS_DEF[];

extern const vexAttribDef PRINTER_ATTRS_DEF[];
extern const uint32_t PRINTER_KEYS_DEF[];

extern const vexAttribDef ENCLOSURE_ATTRS_DEF[];

extern const vexAttribDef PC_PAR_ATTRS_DEF[];

extern const vexAttribDef SERIAL_PORT_ATTRS_DEF[];

extern const vexAttribDef PARALLEL_PORT_ATTRS_DEF[];

extern const vexAttribDef INSTALLED_PKGS_ATTRS_DEF[];

extern const vexAttribDef INSTALLED_PATCH_ATTRS_DEF[];
extern const uint32_t INSTALLED_PATCH_KEYS_DEF[];

extern const vexAttribDef USB_DEVICE_ATTRS_DEF[];
extern const uint32_t USB_DEVICE_KEYS_DEF[];
extern const vexEnumDef USB_DEVICE_CLASS_ENUM_DEF[];
extern const vexEnumDef USB_DEVICE_IS_HUB_ENUM_DEF[];

extern const vexAttribDef MODEM_ATTRS_DEF[];
extern const uint32_t MODEM_KEYS_DEF[];
extern const vexEnumDef MODEM_DEVTYPE_ENUMS_DEF[];

extern const vexAttribDef MONITOR_ATTRS_DEF[];
extern const uint32_t MONITOR_KEYS_DEF[];

extern const vexAttribDef SERVICE_INFO_ATTRS_DEF[];
extern const uint32_t SERVICE_INFO_KEYS_DEF[];

extern const vexAttribDef USER_ACCOUNT_INFO_ATTRS_DEF[];
extern const uint32_t USER_ACCOUNT_INFO_KEYS_DEF[];
