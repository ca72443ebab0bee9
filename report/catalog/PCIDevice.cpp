#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(PCI_DEVICE_INDEX, PLAIN, "", "row number from 1"),
    known(PCI_DEVICE_NAME, PLAIN, "", "Vendor Name, a blank and Device Name"),
    known(PCI_DEVICE_REVISION, PLAIN, "", "`revision`: \"0x00\""),
    text(PCI_DEVICE_SLOT, "Slot", 32, PLAIN, "name of the folder in `/sys/bus/pci/devices`"),
    number(PCI_DEVICE_VENDOR_ID, "Vendor ID", "", PLAIN, "`vendor`"),
    number(PCI_DEVICE_DEVICE_ID, "Device ID", "", PLAIN, "`device`"),
    number(PCI_DEVICE_SUBSYSTEM_VENDOR_ID, "Subsystem Vendor ID", "", PLAIN, "`subsystem_vendor`"),
    number(PCI_DEVICE_SUBSYSTEM_DEVICE_ID, "Subsystem Device ID", "", PLAIN, "`subsystem_device`"),
    number(PCI_DEVICE_CLASS_ID, "Class ID", "", PLAIN, "`class`: base class, subclass and programming interface"),
    text(PCI_DEVICE_CLASS_NAME, "Class Name", 255, PLAIN, "pci.ids, subclass; else base class"),
    text(PCI_DEVICE_VENDOR_NAME, "Vendor Name", 255, PLAIN, "pci.ids"),
    text(PCI_DEVICE_DEVICE_NAME, "Device Name", 255, PLAIN, "pci.ids"),
    text(PCI_DEVICE_DRIVER, "Driver", 64, PLAIN, "link `driver`"),
    number(PCI_DEVICE_NUMA_NODE, "NUMA Node", "", PLAIN, "`numa_node`, unless -1"),
    text(PCI_DEVICE_LINK_SPEED, "Link Speed", 32, PLAIN, "`current_link_speed`"),
    number(PCI_DEVICE_LINK_WIDTH, "Link Width", "lanes", PLAIN, "`current_link_width`"),
    text(PCI_DEVICE_MAXIMUM_LINK_SPEED, "Maximum Link Speed", 32, PLAIN, "`max_link_speed`"),
    number(PCI_DEVICE_MAXIMUM_LINK_WIDTH, "Maximum Link Width", "lanes", PLAIN, "`max_link_width`"),
    number(PCI_DEVICE_IOMMU_GROUP, "IOMMU Group", "", PLAIN, "link `iommu_group`"),
};
// clang-format on

constexpr uint32_t kKeys[] = {PCI_DEVICE_SLOT};
constexpr PairingDef kPairing[] = {{{PCI_DEVICE_SLOT}}};

static_assert(isWellFormed(kAttributes), "PCIDevice: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "PCIDevice: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "PCIDevice: pairing without attribute");
} // namespace

constexpr GroupDef PCI_DEVICE_GROUP = {
    .id = GROUP_PCI_DEVICE,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "`/sys/bus/pci/devices`, names of pci.ids: a row a function",
};
} // namespace report
