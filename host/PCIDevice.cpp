// PCI Device: every function that the kernel has found, by its slot, with the names that pci.ids gives it.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/pci/PciNames.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kDevices = "/sys/bus/pci/devices/";

// What identifies a function; read first, so that the names of all are looked up at once.
struct Function {
    std::string folder; // its path and a slash
    std::string slot;
    std::optional<uint64_t> vendor, device, classId;
};

std::vector<Function> readFunctions(const Root& root)
{
    std::vector<Function> functions;
    for (const std::string& slot : root.list(kDevices)) {
        const std::string folder = kDevices + slot + '/';
        functions.push_back({folder, slot, root.number(folder + "vendor"), root.number(folder + "device"),
                             root.number(folder + "class")});
    }
    return functions;
}

PciNames readNames(const Root& root, const std::vector<Function>& functions)
{
    PciNames names;
    for (const Function& function : functions) {
        if (function.vendor && function.device)
            names.want(static_cast<uint32_t>(*function.vendor), static_cast<uint32_t>(*function.device));
        if (function.classId)
            names.wantClass(static_cast<uint32_t>(*function.classId));
    }
    names.read(root);
    return names;
}

void addNames(const Function& function, const PciNames& names, RowBuilder& row)
{
    const auto vendorId = static_cast<uint32_t>(function.vendor.value_or(0));
    const std::string vendor = function.vendor ? names.vendor(vendorId) : "";
    const std::string device =
        function.vendor && function.device ? names.device(vendorId, static_cast<uint32_t>(*function.device)) : "";
    row.text(PCI_DEVICE_NAME, std::string(report::trimmed(vendor + ' ' + device)), names.source());
    row.text(PCI_DEVICE_VENDOR_NAME, vendor, names.source());
    row.text(PCI_DEVICE_DEVICE_NAME, device, names.source());
    if (function.classId)
        row.text(PCI_DEVICE_CLASS_NAME, names.className(static_cast<uint32_t>(*function.classId)), names.source());
}

void addNumber(const Root& root, const Function& function, const char* name, uint32_t attribute, RowBuilder& row)
{
    row.number(attribute, root.number(function.folder + name), function.folder + name);
}

// The kernel's -1 is no node, and has no number here.
void addPlace(const Root& root, const Function& function, RowBuilder& row)
{
    addNumber(root, function, "numa_node", PCI_DEVICE_NUMA_NODE, row);
    if (const std::optional<std::string> group = root.linkName(function.folder + "iommu_group"))
        row.number(PCI_DEVICE_IOMMU_GROUP, report::parseNumber(*group), function.folder + "iommu_group");
    row.text(PCI_DEVICE_DRIVER, root.linkName(function.folder + "driver"), function.folder + "driver");
}

// Widths of 0 or 255 and the speed "Unknown" are those of functions without a link.
void addLink(const Root& root, const Function& function, const char* speedName, const char* widthName,
             uint32_t speedAttribute, uint32_t widthAttribute, RowBuilder& row)
{
    constexpr uint64_t kUnknownWidth = 255;
    const std::string widthPath = function.folder + widthName;
    const std::optional<uint64_t> width = root.number(widthPath);
    if (!width || *width == 0 || *width == kUnknownWidth)
        return;
    row.number(widthAttribute, width, widthPath);
    const MaybeFact speed = root.fact(function.folder + speedName);
    if (speed && !speed->value.starts_with("Unknown"))
        row.text(speedAttribute, *speed);
}

RowBuilder functionRow(const Root& root, const Function& function, const PciNames& names, uint64_t index)
{
    RowBuilder row(GROUP_PCI_DEVICE);
    row.number(PCI_DEVICE_INDEX, index, kDevices);
    row.text(PCI_DEVICE_SLOT, function.slot, kDevices);
    row.text(PCI_DEVICE_REVISION, root.fact(function.folder + "revision"));
    row.number(PCI_DEVICE_VENDOR_ID, function.vendor, function.folder + "vendor");
    row.number(PCI_DEVICE_DEVICE_ID, function.device, function.folder + "device");
    row.number(PCI_DEVICE_CLASS_ID, function.classId, function.folder + "class");
    addNumber(root, function, "subsystem_vendor", PCI_DEVICE_SUBSYSTEM_VENDOR_ID, row);
    addNumber(root, function, "subsystem_device", PCI_DEVICE_SUBSYSTEM_DEVICE_ID, row);
    addNames(function, names, row);
    addPlace(root, function, row);
    addLink(root, function, "current_link_speed", "current_link_width", PCI_DEVICE_LINK_SPEED, PCI_DEVICE_LINK_WIDTH,
            row);
    addLink(root, function, "max_link_speed", "max_link_width", PCI_DEVICE_MAXIMUM_LINK_SPEED,
            PCI_DEVICE_MAXIMUM_LINK_WIDTH, row);
    return row;
}
} // namespace

void collectPCIDevice(const Machine& machine, Collection& collection)
{
    const std::vector<Function> functions = readFunctions(machine.root);
    const PciNames names = readNames(machine.root, functions);
    uint64_t index = 0;
    for (const Function& function : functions)
        collection.add(functionRow(machine.root, function, names, ++index));
}
} // namespace host
