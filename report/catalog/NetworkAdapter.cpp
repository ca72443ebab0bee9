#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
constexpr const char* kKinds[] = {"Physical", "Wireless", "Bridge",  "Bond",  "Team",
                                  "VLAN",     "Tunnel",   "Virtual", "Other", nullptr};

// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(NETWORK_ADAPTER_INDEX, PLAIN, "", "row number from 1"),
    known(NETWORK_ADAPTER_ID, IDENTIFYING, "", "MD5 digest of Permanent Address and Interface, as invhw makes it"),
    known(NETWORK_ADAPTER_PERMANENT_ADDRESS, IDENTIFYING, "", "netlink, IFLA_PERM_ADDRESS; else the link's address"),
    known(NETWORK_ADAPTER_CURRENT_ADDRESS, IDENTIFYING, "", "netlink, IFLA_ADDRESS"),
    known(NETWORK_ADAPTER_TYPE, PLAIN, "", "from the link's hardware type"),
    known(NETWORK_ADAPTER_MODEL, IDENTIFYING_IF_ADDRESS, "", "device name in pci.ids, the USB device's `product`; else the interface's name"),
    known(NETWORK_ADAPTER_MANUFACTURER, PLAIN, "", "vendor name in pci.ids, the USB device's `manufacturer`"),
    known(NETWORK_ADAPTER_INSTALL_DATE, PLAIN, "", "not produced by invhwctl"),
    known(NETWORK_ADAPTER_CONNECTOR_TYPE, PLAIN, "", "ethtool, ETHTOOL_GLINKSETTINGS, port"),
    text(NETWORK_ADAPTER_INTERFACE, "Interface", 64, IDENTIFYING_IF_ADDRESS, "netlink, RTM_GETLINK"),
    word(NETWORK_ADAPTER_KIND, "Kind", 16, kKinds, PLAIN, "netlink, IFLA_INFO_KIND; else the `device` link and `uevent`, DEVTYPE, in `/sys/class/net/*`"),
    text(NETWORK_ADAPTER_DRIVER, "Driver", 64, PLAIN, "`/sys/class/net/*/device/driver`; else ethtool, ETHTOOL_GDRVINFO"),
    text(NETWORK_ADAPTER_BUS_ADDRESS, "Bus Address", 64, PLAIN, "`/sys/class/net/*/device`"),
    text(NETWORK_ADAPTER_LINK_STATE, "Link State", 32, VOLATILE, "netlink, IFLA_OPERSTATE"),
    number(NETWORK_ADAPTER_SPEED, "Speed", "Mbit/s", VOLATILE, "`/sys/class/net/*/speed`"),
    text(NETWORK_ADAPTER_DUPLEX, "Duplex", 16, VOLATILE, "`/sys/class/net/*/duplex`"),
    number(NETWORK_ADAPTER_MTU, "MTU", "bytes", PLAIN, "netlink, IFLA_MTU"),
    text(NETWORK_ADAPTER_FIRMWARE_VERSION, "Firmware Version", 64, PLAIN, "ethtool, ETHTOOL_GDRVINFO"),
    text(NETWORK_ADAPTER_MASTER, "Master", 64, IDENTIFYING_IF_ADDRESS, "netlink, IFLA_MASTER: the bridge or bond above it"),
};
// clang-format on

constexpr uint32_t kKeys[] = {NETWORK_ADAPTER_INTERFACE};
constexpr PairingDef kPairing[] = {{{NETWORK_ADAPTER_PERMANENT_ADDRESS, NETWORK_ADAPTER_INTERFACE}}};

static_assert(isWellFormed(kAttributes), "NetworkAdapter: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "NetworkAdapter: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "NetworkAdapter: pairing without attribute");
} // namespace

constexpr GroupDef NETWORK_ADAPTER_GROUP = {
    .id = GROUP_NETWORK_ADAPTER,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "netlink, `/sys/class/net` and ethtool's driver information: a row a link but loopback",
};
} // namespace report
