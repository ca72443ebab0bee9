#include "host/Collectors.h"

#include <algorithm>

#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// In report order (report/Catalog.cpp); Scan Status comes last and is the scan's own.
constexpr Collector kCollectors[] = {
    {GROUP_COMPONENTID, collectComponentID},
    {GROUP_PROCESSOR, collectProcessor},
    {GROUP_PROCESSOR_VULNERABILITY, collectProcessorVulnerability},
    {GROUP_NUMA_NODE, collectNUMANode},
    {GROUP_MEMORY, collectMemory},
    {GROUP_MEMORY_MODULES, collectMemoryModules},
    {GROUP_OPERATING_SYSTEM, collectOperatingSystem},
    {GROUP_STORAGE, collectStorage},
    {GROUP_DISK_PARTITION, collectDiskPartition},
    {GROUP_LOGICAL_DRIVE, collectLogicalDrive},
    {GROUP_IP_ADDRESS, collectIPAddress},
    {GROUP_ROUTE, collectRoute},
    {GROUP_NETWORK_ADAPTER, collectNetworkAdapter},
    {GROUP_REGIONAL, collectRegional},
    {GROUP_UNIX_SYSTEM_PARAMS, collectUnixSystemParams},
    {GROUP_PC_SYSTEM_PARAMS, collectPCSystemParams},
    {GROUP_SCAN_INFO, collectScanInfo},
    {GROUP_PARTITION, collectPartition},
    {GROUP_SMBIOS, collectSMBIOS},
    {GROUP_SYSTEM_ENCLOSURE, collectSystemEnclosure},
    {GROUP_FIRMWARE, collectFirmware},
    {GROUP_FIRMWARE_RESOURCE, collectFirmwareResource},
    {GROUP_TPM, collectTPM},
    {GROUP_PCI_DEVICE, collectPCIDevice},
    {GROUP_USB_DEVICE, collectUSBDevice},
    {GROUP_VIDEO, collectVideo},
    {GROUP_MONITOR, collectMonitor},
    {GROUP_KEYBOARD, collectKeyboard},
    {GROUP_POINTING_DEVICE, collectPointingDevice},
    {GROUP_SERIAL_PORT, collectSerialPort},
    {GROUP_PARALLEL_PORT, collectParallelPort},
    {GROUP_PRINTER, collectPrinter},
    {GROUP_MODEM, collectModem},
    {GROUP_BATTERY, collectBattery},
    {GROUP_SENSOR, collectSensor},
    {GROUP_KERNEL_MODULE, collectKernelModule},
    {GROUP_SOFTWARE_PACKAGES, collectSoftwarePackages},
    {GROUP_INSTALLED_PATCHES, collectInstalledPatches},
    {GROUP_SERVICE_INFO, collectServiceInfo},
    {GROUP_USER_ACCOUNT_INFO, collectUserAccountInfo},
    {GROUP_LPAR, collectLpar},
    {GROUP_SITE, collectSite},
    {GROUP_MACHINE_IDENTITY, collectMachineIdentity},
};
} // namespace

std::span<const Collector> collectors()
{
    return kCollectors;
}

std::vector<const Collector*> wantedCollectors(std::span<const uint32_t> groups)
{
    std::vector<const Collector*> wanted;
    for (const Collector& collector : kCollectors)
        if (groups.empty() || std::find(groups.begin(), groups.end(), collector.group) != groups.end())
            wanted.push_back(&collector);
    return wanted;
}
} // namespace host
