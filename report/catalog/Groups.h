#pragma once

#include "report/Catalog.h"

// Every group of the host catalog, each declared in the file of its name (report/catalog/<Group>.cpp). Their order in a
// report is the order of the list in report/Catalog.cpp.

namespace report
{
extern const GroupDef COMPONENTID_GROUP;
extern const GroupDef PROCESSOR_GROUP;
extern const GroupDef PROCESSOR_VULNERABILITY_GROUP;
extern const GroupDef NUMA_NODE_GROUP;
extern const GroupDef MEMORY_GROUP;
extern const GroupDef MEMORY_MODULES_GROUP;
extern const GroupDef OPERATING_SYSTEM_GROUP;
extern const GroupDef STORAGE_GROUP;
extern const GroupDef DISK_PARTITION_GROUP;
extern const GroupDef LOGICAL_DRIVE_GROUP;
extern const GroupDef IP_ADDRESS_GROUP;
extern const GroupDef ROUTE_GROUP;
extern const GroupDef NETWORK_ADAPTER_GROUP;
extern const GroupDef REGIONAL_GROUP;
extern const GroupDef UNIX_SYSTEM_PARAMS_GROUP;
extern const GroupDef PC_SYSTEM_PARAMS_GROUP;
extern const GroupDef SCAN_INFO_GROUP;
extern const GroupDef PARTITION_GROUP;
extern const GroupDef SMBIOS_GROUP;
extern const GroupDef SYSTEM_ENCLOSURE_GROUP;
extern const GroupDef FIRMWARE_GROUP;
extern const GroupDef FIRMWARE_RESOURCE_GROUP;
extern const GroupDef TPM_GROUP;
extern const GroupDef PCI_DEVICE_GROUP;
extern const GroupDef USB_DEVICE_GROUP;
extern const GroupDef VIDEO_GROUP;
extern const GroupDef MONITOR_GROUP;
extern const GroupDef KEYBOARD_GROUP;
extern const GroupDef POINTING_DEVICE_GROUP;
extern const GroupDef SERIAL_PORT_GROUP;
extern const GroupDef PARALLEL_PORT_GROUP;
extern const GroupDef PRINTER_GROUP;
extern const GroupDef MODEM_GROUP;
extern const GroupDef BATTERY_GROUP;
extern const GroupDef SENSOR_GROUP;
extern const GroupDef KERNEL_MODULE_GROUP;
extern const GroupDef SOFTWARE_PACKAGES_GROUP;
extern const GroupDef INSTALLED_PATCHES_GROUP;
extern const GroupDef SERVICE_INFO_GROUP;
extern const GroupDef USER_ACCOUNT_INFO_GROUP;
extern const GroupDef IPX_ADDRESS_GROUP;
extern const GroupDef LPAR_GROUP;
extern const GroupDef SITE_GROUP;
extern const GroupDef MACHINE_IDENTITY_GROUP;
extern const GroupDef SCAN_STATUS_GROUP;
} // namespace report
