// IP Address: every address of every link but loopback, with the gateway and the name servers that go with it.

#include <arpa/inet.h>

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/network/LinkFacts.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr std::string_view kAddresses = "RTM_GETADDR";
constexpr std::string_view kRoutes = "RTM_GETROUTE";
constexpr std::string_view kLinks = "RTM_GETLINK";
constexpr uint32_t kMainTable = 254;

struct Scope {
    uint8_t value; // RT_SCOPE_*
    const char* name;
};
constexpr Scope kScopes[] = {{0, "global"}, {200, "site"}, {253, "link"}, {254, "host"}};

// What all rows share.
struct Network {
    std::map<uint32_t, Link> links;
    std::vector<Route> routes;
    Resolver resolver;
    std::string node;
};

// The default route of a link with the lowest metric.
const Route* defaultRoute(const Network& network, const Address& address)
{
    const Route* best = nullptr;
    for (const Route& route : network.routes) {
        const bool fits = route.link == address.link && route.isIPv6 == address.isIPv6 && route.prefixLength == 0 &&
                          route.table == kMainTable && !route.gateway.empty();
        if (fits && (best == nullptr || route.metric < best->metric))
            best = &route;
    }
    return best;
}

// Of IPv4 the mask in dotted form, of IPv6 the prefix length.
std::string subnetOf(const Address& address)
{
    if (address.isIPv6)
        return std::to_string(address.prefixLength);
    const uint32_t bits = std::min<uint32_t>(address.prefixLength, 32);
    in_addr mask{};
    mask.s_addr = htonl(bits == 0 ? 0 : UINT32_MAX << (32 - bits));
    char text[INET_ADDRSTRLEN];
    return inet_ntop(AF_INET, &mask, text, sizeof text) != nullptr ? text : "";
}

void addLink(const Link& link, RowBuilder& row)
{
    row.text(IP_ADDRESS_INTERFACE, link.name, kLinks);
    row.text(IP_ADDRESS_PERMANENT_MAC, link.permanentAddress.empty() ? link.address : link.permanentAddress, kLinks);
}

void addNames(const Network& network, RowBuilder& row)
{
    const size_t dot = std::min(network.node.find('.'), network.node.size());
    row.text(IP_ADDRESS_HOSTNAME, network.node.substr(0, dot), "uname");
    if (dot != network.node.size())
        row.text(IP_ADDRESS_DOMAIN, network.node.substr(dot + 1), "uname");
    else
        row.text(IP_ADDRESS_DOMAIN, network.resolver.domain, network.resolver.source);
    const std::vector<std::string>& servers = network.resolver.servers;
    if (!servers.empty())
        row.text(IP_ADDRESS_PRIMARY_DNS, servers[0], network.resolver.source);
    if (servers.size() > 1)
        row.text(IP_ADDRESS_SECONDARY_DNS, servers[1], network.resolver.source);
}

void addAddress(const Address& address, RowBuilder& row)
{
    row.text(IP_ADDRESS_ADDRESS, address.address, kAddresses);
    row.text(IP_ADDRESS_ADDRESS_FAMILY, familyName(address.isIPv6), kAddresses);
    row.number(IP_ADDRESS_PREFIX_LENGTH, address.prefixLength, kAddresses);
    row.text(IP_ADDRESS_SUBNET, subnetOf(address), kAddresses);
    row.yesNo(IP_ADDRESS_DYNAMIC, !address.isPermanent, kAddresses);
    for (const Scope& scope : kScopes)
        if (scope.value == address.scope)
            row.text(IP_ADDRESS_SCOPE, scope.name, kAddresses);
}

// A lease file of a client that sets addresses for ever and renews them itself.
bool hasLease(const Root& root, const Link& link)
{
    return root.exists("/run/systemd/netif/leases/" + std::to_string(link.index)) ||
           root.exists("/var/lib/dhcp/dhclient." + link.name + ".leases");
}

Network readNetwork(const Machine& machine)
{
    Network network;
    for (const Link& link : machine.kernel.links())
        network.links.emplace(link.index, link);
    network.routes = machine.kernel.routes();
    network.resolver = readResolver(machine.root);
    network.node = machine.kernel.names().node;
    return network;
}

// Addresses that a router's announcement made are dynamic and no lease's.
bool isLeased(const Root& root, const Address& address, const Link& link)
{
    return !address.isIPv6 && (!address.isPermanent || hasLease(root, link));
}
} // namespace

void collectIPAddress(const Machine& machine, Collection& collection)
{
    constexpr uint16_t kLoopback = 772; // ARPHRD_LOOPBACK
    const Network network = readNetwork(machine);
    uint64_t index = 0;
    for (const Address& address : machine.kernel.addresses()) {
        const auto link = network.links.find(address.link);
        if (link == network.links.end() || link->second.hardwareType == kLoopback)
            continue;
        RowBuilder row(GROUP_IP_ADDRESS);
        row.number(IP_ADDRESS_INDEX, ++index, kAddresses);
        addAddress(address, row);
        row.text(IP_ADDRESS_DHCP_ENABLED, isLeased(machine.root, address, link->second) ? "Y" : "N", kAddresses);
        addLink(link->second, row);
        addNames(network, row);
        if (const Route* route = defaultRoute(network, address))
            row.text(IP_ADDRESS_GATEWAY, route->gateway, kRoutes);
        collection.add(std::move(row));
    }
}
} // namespace host
