#include "report/catalog/Groups.h"
#include "report/catalog/SharedTexts.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(IP_ADDRESS_INDEX, PLAIN, "", "row number from 1"),
    known(IP_ADDRESS_ADDRESS, IDENTIFYING | VOLATILE_IF_DYNAMIC, "", "netlink, RTM_GETADDR"),
    known(IP_ADDRESS_DHCP_ENABLED, PLAIN, "", "Y for an IPv4 address with a lifetime or a lease in `/run/systemd/netif/leases` or `/var/lib/dhcp`, else N"),
    known(IP_ADDRESS_HOSTNAME, IDENTIFYING, "", "`uname` node name, before the first dot"),
    known(IP_ADDRESS_DOMAIN, IDENTIFYING, "", "`uname` node name, after the first dot; else `/etc/resolv.conf`, \"search\" or \"domain\""),
    known(IP_ADDRESS_SUBNET, PLAIN, "", "from the prefix length: of IPv4 the mask, of IPv6 the length"),
    known(IP_ADDRESS_GATEWAY, IDENTIFYING | VOLATILE_IF_DYNAMIC, "", "netlink, RTM_GETROUTE: default route of the interface with the lowest metric"),
    known(IP_ADDRESS_PRIMARY_DNS, IDENTIFYING | VOLATILE_IF_DYNAMIC, "", "`/etc/resolv.conf`, first \"nameserver\"; behind a local stub `/run/systemd/resolve/resolv.conf` or `/run/NetworkManager/resolv.conf`"),
    known(IP_ADDRESS_SECONDARY_DNS, IDENTIFYING | VOLATILE_IF_DYNAMIC, "", "as Primary DNS, second \"nameserver\""),
    known(IP_ADDRESS_PERMANENT_MAC, IDENTIFYING, "", "netlink, IFLA_PERM_ADDRESS; else the link's address"),
    text(IP_ADDRESS_INTERFACE, "Interface", 64, IDENTIFYING_IF_ADDRESS, "netlink, RTM_GETLINK"),
    word(IP_ADDRESS_ADDRESS_FAMILY, "Address Family", 8, ADDRESS_FAMILY_WORDS, PLAIN, "netlink, RTM_GETADDR"),
    number(IP_ADDRESS_PREFIX_LENGTH, "Prefix Length", "bits", PLAIN, "netlink, RTM_GETADDR"),
    text(IP_ADDRESS_SCOPE, "Scope", 16, PLAIN, "netlink, RTM_GETADDR: global, site, link or host"),
    yesNo(IP_ADDRESS_DYNAMIC, "Dynamic", PLAIN, "netlink, RTM_GETADDR: not IFA_F_PERMANENT"),
};
// clang-format on

constexpr uint32_t kKeys[] = {IP_ADDRESS_INTERFACE, IP_ADDRESS_ADDRESS, IP_ADDRESS_PREFIX_LENGTH};

static_assert(isWellFormed(kAttributes), "IPAddress: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "IPAddress: key without attribute");
} // namespace

constexpr GroupDef IP_ADDRESS_GROUP = {
    .id = GROUP_IP_ADDRESS,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "netlink: a row an IPv4 or IPv6 address; `/etc/resolv.conf`",
};
} // namespace report
