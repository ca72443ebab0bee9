// Network Adapter: a row a link but loopback, with or without an address; what it is, where it sits and what drives it.

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "host/network/LinkFacts.h"
#include "host/pci/PciNames.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr std::string_view kLinks = "RTM_GETLINK";

// Hardware types (ARPHRD_*) and what the catalog calls them.
constexpr uint16_t kEthernet = 1, kLoopback = 772;
struct HardwareType {
    uint16_t type;
    uint32_t code;
};
constexpr uint32_t kOtherAdapter = 2, kEthernetAdapter = 3, kTokenRing = 4, kFibreChannel = 5, kSlip = 6, kPpp = 10,
                   kFddi = 17;
constexpr HardwareType kTypes[] = {
    {kEthernet, kEthernetAdapter},
    {800, kTokenRing},
    {6, kTokenRing},
    {784, kFibreChannel},
    {787, kFibreChannel},
    {256, kSlip},
    {257, kSlip},
    {512, kPpp},
    {774, kFddi},
};

// The kernel's kinds of links that are no device; any other one of them is Virtual.
struct Kind {
    std::string_view kernel;
    const char* kind;
};
constexpr Kind kKinds[] = {
    {"bridge", "Bridge"},    {"bond", "Bond"},   {"team", "Team"},     {"vlan", "VLAN"},        {"ipip", "Tunnel"},
    {"sit", "Tunnel"},       {"gre", "Tunnel"},  {"gretap", "Tunnel"}, {"ip6gre", "Tunnel"},    {"ip6gretap", "Tunnel"},
    {"ip6tnl", "Tunnel"},    {"vti", "Tunnel"},  {"vti6", "Tunnel"},   {"vxlan", "Tunnel"},     {"geneve", "Tunnel"},
    {"wireguard", "Tunnel"}, {"xfrm", "Tunnel"}, {"erspan", "Tunnel"}, {"ip6erspan", "Tunnel"}, {"tun", "Virtual"},
};

// Ports of ETHTOOL_GLINKSETTINGS by their number.
constexpr const char* kPorts[] = {"TP", "AUI", "MII", "FIBRE", "BNC", "DA"};

std::string folderOf(const Link& link)
{
    return "/sys/class/net/" + link.name + '/';
}

uint32_t typeCode(const Link& link)
{
    for (const HardwareType& type : kTypes)
        if (type.type == link.hardwareType)
            return type.code;
    return kOtherAdapter;
}

bool isWireless(const Root& root, const std::string& folder)
{
    return root.exists(folder + "wireless") || root.exists(folder + "phy80211");
}

// Null where /sys, which tells devices from other links, shows nothing of the link.
const char* kindOf(const Root& root, const Link& link)
{
    const std::string folder = folderOf(link);
    if (isWireless(root, folder))
        return "Wireless";
    for (const Kind& kind : kKinds)
        if (kind.kernel == link.kind)
            return kind.kind;
    if (!link.kind.empty())
        return "Virtual";
    if (root.exists(folder + "device"))
        return "Physical";
    return root.exists(folder.substr(0, folder.size() - 1)) ? "Virtual" : nullptr;
}

// Names from the device's ids: of PCI from pci.ids, of USB what the device says of itself.
struct Maker {
    std::string manufacturer, model;
    std::string source;
};

// A device's PCI function: itself, or of a virtio device the transport above it.
std::string functionOf(const Root& root, const std::string& device)
{
    const bool isVirtio = root.linkName(device + "/subsystem") == "virtio";
    return isVirtio ? device.substr(0, device.rfind('/')) : device;
}

struct PciIds {
    uint32_t vendor, device;
};
std::optional<PciIds> pciIds(const Root& root, const std::string& function)
{
    const std::optional<uint64_t> vendor = root.number(function + "/vendor");
    const std::optional<uint64_t> device = root.number(function + "/device");
    if (!vendor || !device)
        return std::nullopt;
    return PciIds{static_cast<uint32_t>(*vendor), static_cast<uint32_t>(*device)};
}

// The names of all links' devices, looked up at once.
PciNames readNames(const Root& root, const std::vector<Link>& links)
{
    PciNames names;
    for (const Link& link : links)
        if (const std::optional<std::string> device = root.realPath(folderOf(link) + "device"))
            if (const std::optional<PciIds> ids = pciIds(root, functionOf(root, *device)))
                names.want(ids->vendor, ids->device);
    names.read(root);
    return names;
}

// A USB interface's names are those of the device above it.
Maker usbMaker(const Root& root, const std::string& device)
{
    const std::string above = device.substr(0, device.rfind('/'));
    return {root.line(above + "/manufacturer").value_or(""), root.line(above + "/product").value_or(""), above};
}

Maker makerOf(const Root& root, const std::string& device, const PciNames& names)
{
    if (root.linkName(device + "/subsystem") == "usb")
        return usbMaker(root, device);
    const std::optional<PciIds> ids = pciIds(root, functionOf(root, device));
    return ids ? Maker{names.vendor(ids->vendor), names.device(ids->vendor, ids->device), names.source()} : Maker{};
}

void addDevice(const Root& root, const std::string& folder, const PciNames& names, RowBuilder& row)
{
    const std::optional<std::string> device = root.realPath(folder + "device");
    if (!device)
        return;
    const Maker maker = makerOf(root, *device, names);
    row.text(NETWORK_ADAPTER_BUS_ADDRESS, device->substr(device->rfind('/') + 1), folder + "device");
    row.text(NETWORK_ADAPTER_DRIVER, root.linkName(folder + "device/driver"), folder + "device/driver");
    row.text(NETWORK_ADAPTER_MANUFACTURER, maker.manufacturer, maker.source);
    row.text(NETWORK_ADAPTER_MODEL, maker.model, maker.source);
}

void addDriver(const Kernel& kernel, const Link& link, RowBuilder& row)
{
    constexpr std::string_view kDriverInfo = "ETHTOOL_GDRVINFO";
    const std::optional<LinkDriver> driver = kernel.linkDriver(link.name);
    if (!driver)
        return;
    if (!row.has(NETWORK_ADAPTER_DRIVER))
        row.text(NETWORK_ADAPTER_DRIVER, driver->driver, kDriverInfo);
    if (driver->firmwareVersion != "N/A")
        row.text(NETWORK_ADAPTER_FIRMWARE_VERSION, driver->firmwareVersion, kDriverInfo);
    if (driver->port && *driver->port < std::size(kPorts))
        row.text(NETWORK_ADAPTER_CONNECTOR_TYPE, kPorts[*driver->port], "ETHTOOL_GLINKSETTINGS");
}

// Links that are down have no speed; the kernel says -1 or an error.
void addState(const Root& root, const Link& link, RowBuilder& row)
{
    const std::string folder = folderOf(link);
    row.text(NETWORK_ADAPTER_LINK_STATE, link.operationalState, kLinks);
    row.number(NETWORK_ADAPTER_SPEED, root.number(folder + "speed"), folder + "speed");
    const MaybeFact duplex = root.fact(folder + "duplex");
    if (duplex && duplex->value != "unknown")
        row.text(NETWORK_ADAPTER_DUPLEX, *duplex);
    if (link.mtu != 0)
        row.number(NETWORK_ADAPTER_MTU, link.mtu, kLinks);
}

// What rows need of all links.
struct AllLinks {
    std::map<uint32_t, std::string> names;
    PciNames deviceNames;
};

RowBuilder linkRow(const Machine& machine, const Link& link, const AllLinks& all, uint64_t index)
{
    RowBuilder row(GROUP_NETWORK_ADAPTER);
    const std::string& permanent = link.permanentAddress.empty() ? link.address : link.permanentAddress;
    row.number(NETWORK_ADAPTER_INDEX, index, kLinks);
    row.text(NETWORK_ADAPTER_ID, md5(permanent + link.name), "");
    row.text(NETWORK_ADAPTER_INTERFACE, link.name, kLinks);
    row.text(NETWORK_ADAPTER_PERMANENT_ADDRESS, permanent, kLinks);
    row.text(NETWORK_ADAPTER_CURRENT_ADDRESS, link.address, kLinks);
    row.number(NETWORK_ADAPTER_TYPE, typeCode(link), kLinks);
    if (const char* kind = kindOf(machine.root, link))
        row.text(NETWORK_ADAPTER_KIND, kind, link.kind.empty() ? folderOf(link) : std::string(kLinks));
    addDevice(machine.root, folderOf(link), all.deviceNames, row);
    addDriver(machine.kernel, link, row);
    if (!row.has(NETWORK_ADAPTER_MODEL))
        row.text(NETWORK_ADAPTER_MODEL, link.name, kLinks);
    addState(machine.root, link, row);
    if (const auto master = all.names.find(link.master); link.master != 0 && master != all.names.end())
        row.text(NETWORK_ADAPTER_MASTER, master->second, kLinks);
    return row;
}
} // namespace

void collectNetworkAdapter(const Machine& machine, Collection& collection)
{
    const std::vector<Link> links = machine.kernel.links();
    const AllLinks all{linkNames(links), readNames(machine.root, links)};
    uint64_t index = 0;
    for (const Link& link : links)
        if (link.hardwareType != kLoopback)
            collection.add(linkRow(machine, link, all, ++index));
}
} // namespace host
