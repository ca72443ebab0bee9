#include "com/VexCatalog.h"

#include "com/VexAttribIds.h"
#include "com/catalog/CatalogCheck.h"

// The masks are one bit per group in the order of ids, but Partition and USB Device have each other's, and the two last
// groups came when no bit was left: theirs overlap those of other groups. Logs are filtered by these values: they stay.

// clang-format off
constexpr vexGroupDef GROUPS_DEF[] = {
    // id                      name                  attributes                   keys                        #  v  debug mask
    {GROUP_COMPONENTID,        "ComponentID",        COMPONENTID_ATTRS_DEF,       nullptr,                    0, 1, DEBUG_COMPONENTID},
    {GROUP_PROCESSOR,          "Processor",          PROCESSOR_ATTRS_DEF,         PROCESSOR_KEYS_DEF,         2, 1, DEBUG_PROCESSOR},
    {GROUP_MEMORY,             "Memory",             MEMORY_ATTRS_DEF,            nullptr,                    0, 1, DEBUG_MEMORY},
    {GROUP_OPERATING_SYSTEM,   "Operating System",   OPER_SYS_ATTRS_DEF,          nullptr,                    0, 1, DEBUG_OPERATING_SYSTEM},
    {GROUP_STORAGE,            "Storage",            STORAGE_ATTRS_DEF,           STORAGE_KEYS_DEF,           2, 1, DEBUG_STORAGE},
    {GROUP_IP_ADDRESS,         "IP Address",         IP_ADDR_ATTRS_DEF,           IP_ADDRESS_KEYS_DEF,        1, 1, DEBUG_IP_ADDRESS},
    {GROUP_NETWORK_ADAPTER,    "Network Adapter",    NET_ADPTR_ATTRS_DEF,         NETWORK_ADAPTER_KEYS_DEF,   1, 1, DEBUG_NETWORK_ADAPTER},
    {8,                        "Disk Partition",     DSK_PART_ATTRS_DEF,          DISK_PARTITION_KEYS_DEF,    1, 1, 0x100},
    {9,                        "Pointing Device",    POINT_DEV_ATTRS_DEF,         POINTING_DEVICE_KEYS_DEF,   2, 1, 0x200},
    {10,                       "Keyboard",           KEYBOARD_ATTRS_DEF,          nullptr,                    0, 1, 0x400},
    {11,                       "Logical Drive",      LOG_DRIVE_ATTRS_DEF,         LOGICAL_DRIVE_KEYS_DEF,     1, 1, 0x800},
    {12,                       "IPX Address",        IPX_ADDR_ATTRS_DEF,          IPX_ADDRESS_KEYS_DEF,       1, 1, 0x1000},
    {13,                       "Video",              VIDEO_ATTRS_DEF,             VIDEO_KEYS_DEF,             2, 1, 0x2000},
    {14,                       "Printer",            PRINTER_ATTRS_DEF,           PRINTER_KEYS_DEF,           2, 1, 0x4000},
    {GROUP_REGIONAL,           "Regional",           REGIONAL_ATTRS_DEF,          nullptr,                    0, 1, DEBUG_REGIONAL},
    {16,                       "System Enclosure",   ENCLOSURE_ATTRS_DEF,         nullptr,                    0, 1, 0x10000},
    {GROUP_UNIX_SYSTEM_PARAMS, "UNIX System Params", UNIX_PAR_ATTRS_DEF,          nullptr,                    0, 1, DEBUG_UNIX_SYSTEM_PARAMS},
    {GROUP_SCAN_INFO,          "Scan Info",          SCAN_INFO_ATTRS_DEF,         nullptr,                    0, 1, DEBUG_SCAN_INFO},
    {21,                       "PC System Params",   PC_PAR_ATTRS_DEF,            nullptr,                    0, 1, 0x80000},
    {22,                       "Serial Port",        SERIAL_PORT_ATTRS_DEF,       nullptr,                    0, 1, 0x100000},
    {23,                       "Parallel Port",      PARALLEL_PORT_ATTRS_DEF,     nullptr,                    0, 1, 0x200000},
    {GROUP_SMBIOS,             "SMBIOS",             SMBIOS_ATTRS_DEF,            nullptr,                    0, 1, DEBUG_SMBIOS},
    {25,                       "Software Packages",  INSTALLED_PKGS_ATTRS_DEF,    nullptr,                    0, 1, 0x800000},
    {26,                       "Installed Patches",  INSTALLED_PATCH_ATTRS_DEF,   INSTALLED_PATCH_KEYS_DEF,   2, 1, 0x1000000},
    {GROUP_PARTITION,          "Partition",          PART_ATTRS_DEF,              PARTITION_KEYS_DEF,         3, 1, DEBUG_PARTITION},
    {28,                       "USB Device",         USB_DEVICE_ATTRS_DEF,        USB_DEVICE_KEYS_DEF,        2, 1, 0x2000000},
    {GROUP_PCI_DEVICE,         "PCI Device",         PCI_DEVICE_ATTRS_DEF,        PCI_DEVICE_KEYS_DEF,        2, 1, DEBUG_PCI_DEVICE},
    {30,                       "Modem",              MODEM_ATTRS_DEF,             MODEM_KEYS_DEF,             2, 1, 0x10000000},
    {GROUP_MEMORY_MODULES,     "Memory Modules",     MEMORY_MODULES_ATTRS_DEF,    MEMORY_MODULES_KEYS_DEF,    1, 1, DEBUG_MEMORY_MODULES},
    {32,                       "Monitor",            MONITOR_ATTRS_DEF,           MONITOR_KEYS_DEF,           2, 1, 0x40000000},
    {GROUP_LPAR,               "Lpar",               LPAR_ATTRS_DEF,              nullptr,                    0, 1, DEBUG_LPAR},
    {35,                       "Service Info",       SERVICE_INFO_ATTRS_DEF,      SERVICE_INFO_KEYS_DEF,      1, 1, 0xa},
    {36,                       "User Account Info",  USER_ACCOUNT_INFO_ATTRS_DEF, USER_ACCOUNT_INFO_KEYS_DEF, 2, 1, 0xb},
    {VEX_END,                  nullptr,              nullptr,                     nullptr,                    0, 0, 0},
};
// clang-format on

static_assert(isWellFormed(GROUPS_DEF), "groups: bad row");
