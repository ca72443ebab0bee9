// Links, addresses and routes (rtnetlink(7)).

#include <arpa/inet.h>
#include <cstring>
#include <iterator>
#include <linux/if_addr.h>
#include <linux/if_link.h>

#include <nlohmann/json.hpp>

#include "host/kernel/Dump.h"
#include "host/kernel/Questions.h"

namespace host
{
// RFC 2863, ifOperStatus; the kernel's numbers are another order.
static constexpr const char* kOperationalStates[] = {"unknown", "not present", "down", "lower layer down",
                                                     "testing", "dormant",     "up"};

// Null, with errno, when the kernel tells nothing at all.
static nlohmann::json ask(uint16_t question, void (*add)(const nlmsghdr&, nlohmann::json&))
{
    nlohmann::json answer = nlohmann::json::array();
    const bool isAnswered = dump(
        question, [&] { answer.clear(); }, [&](const nlmsghdr& message) { add(message, answer); });
    return isAnswered || !answer.empty() ? answer : nlohmann::json();
}

static std::string hexadecimal(std::string_view bytes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        if (!text.empty())
            text += ':';
        text += kDigits[static_cast<unsigned char>(byte) >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

// Empty for bytes that are no address of the family.
static std::string internetText(int family, std::string_view bytes)
{
    char text[INET6_ADDRSTRLEN];
    const size_t size = family == AF_INET ? sizeof(in_addr) : sizeof(in6_addr);
    const bool isAddress = bytes.size() == size && inet_ntop(family, bytes.data(), text, sizeof text) != nullptr;
    return isAddress ? text : "";
}

static void addText(nlohmann::json& object, const char* name, std::string text)
{
    if (!text.empty())
        object[name] = std::move(text);
}

static void addNumber(nlohmann::json& object, const char* name, std::optional<uint32_t> number)
{
    if (number.value_or(0) != 0)
        object[name] = *number;
}

static void addLink(const nlmsghdr& message, nlohmann::json& links)
{
    const ifinfomsg* header = headerOf<ifinfomsg>(message);
    if (header == nullptr || message.nlmsg_type != RTM_NEWLINK)
        return;
    const Attributes attributes(message, sizeof *header);
    const uint8_t state = attributes.byte(IFLA_OPERSTATE).value_or(UINT8_MAX);
    nlohmann::json link = {{"index", header->ifi_index},
                           {"name", attributes.text(IFLA_IFNAME)},
                           {"hardwareType", header->ifi_type},
                           {"flags", header->ifi_flags}};
    addNumber(link, "mtu", attributes.number(IFLA_MTU));
    addText(link, "kind", Attributes(attributes.find(IFLA_LINKINFO)).text(IFLA_INFO_KIND));
    addText(link, "address", hexadecimal(attributes.bytes(IFLA_ADDRESS)));
    addText(link, "permanentAddress", hexadecimal(attributes.bytes(IFLA_PERM_ADDRESS)));
    addNumber(link, "master", attributes.number(IFLA_MASTER));
    addNumber(link, "parent", attributes.number(IFLA_LINK));
    if (state < std::size(kOperationalStates))
        link["operationalState"] = kOperationalStates[state];
    links.push_back(std::move(link));
}

// A link to another machine has two addresses: IFA_LOCAL is this one's.
static void addAddress(const nlmsghdr& message, nlohmann::json& addresses)
{
    const ifaddrmsg* header = headerOf<ifaddrmsg>(message);
    if (header == nullptr || message.nlmsg_type != RTM_NEWADDR ||
        (header->ifa_family != AF_INET && header->ifa_family != AF_INET6))
        return;
    const Attributes attributes(message, sizeof *header);
    const uint16_t own = attributes.find(IFA_LOCAL) != nullptr ? IFA_LOCAL : IFA_ADDRESS;
    const uint32_t flags = attributes.number(IFA_FLAGS).value_or(header->ifa_flags);
    addresses.push_back({{"link", header->ifa_index},
                         {"address", internetText(header->ifa_family, attributes.bytes(own))},
                         {"prefixLength", header->ifa_prefixlen},
                         {"scope", header->ifa_scope},
                         {"isPermanent", (flags & IFA_F_PERMANENT) != 0}});
}

// The gateway of a route or of one of its hops: of its own family, or of another one with the family before it.
static std::string gatewayOf(const Attributes& attributes, int family)
{
    if (attributes.find(RTA_GATEWAY) != nullptr)
        return internetText(family, attributes.bytes(RTA_GATEWAY));
    const std::string_view via = attributes.bytes(RTA_VIA);
    uint16_t viaFamily = 0;
    if (via.size() <= sizeof viaFamily)
        return {};
    memcpy(&viaFamily, via.data(), sizeof viaFamily);
    return internetText(viaFamily, via.substr(sizeof viaFamily));
}

// One route for every hop of a route with several.
static void addHops(std::string_view hops, int family, const nlohmann::json& route, nlohmann::json& routes)
{
    rtnexthop hop;
    while (hops.size() >= sizeof hop) {
        memcpy(&hop, hops.data(), sizeof hop);
        if (hop.rtnh_len < sizeof hop || hop.rtnh_len > hops.size())
            return;
        const Attributes attributes(hops.substr(sizeof hop, hop.rtnh_len - sizeof hop));
        nlohmann::json one = route;
        addText(one, "gateway", gatewayOf(attributes, family));
        one["link"] = hop.rtnh_ifindex;
        routes.push_back(std::move(one));
        hops.remove_prefix(std::min<size_t>(MNL_ALIGN(hop.rtnh_len), hops.size()));
    }
}

static void addRoute(const nlmsghdr& message, nlohmann::json& routes)
{
    const rtmsg* header = headerOf<rtmsg>(message);
    if (header == nullptr || message.nlmsg_type != RTM_NEWROUTE || (header->rtm_flags & RTM_F_CLONED) != 0 ||
        (header->rtm_family != AF_INET && header->rtm_family != AF_INET6))
        return;
    const int family = header->rtm_family;
    const Attributes attributes(message, sizeof *header);
    const std::string destination = internetText(family, attributes.bytes(RTA_DST));
    nlohmann::json route = {{"table", attributes.number(RTA_TABLE).value_or(header->rtm_table)},
                            {"destination", !destination.empty() ? destination
                                            : family == AF_INET  ? "0.0.0.0"
                                                                 : "::"},
                            {"prefixLength", header->rtm_dst_len},
                            {"type", header->rtm_type},
                            {"scope", header->rtm_scope},
                            {"flags", header->rtm_flags}};
    addNumber(route, "metric", attributes.number(RTA_PRIORITY));
    if (attributes.find(RTA_MULTIPATH) != nullptr)
        return addHops(attributes.bytes(RTA_MULTIPATH), family, route, routes);
    addText(route, "gateway", gatewayOf(attributes, family));
    addNumber(route, "link", attributes.number(RTA_OIF));
    routes.push_back(std::move(route));
}

nlohmann::json askLinks(const std::string&)
{
    return ask(RTM_GETLINK, addLink);
}

nlohmann::json askAddresses(const std::string&)
{
    return ask(RTM_GETADDR, addAddress);
}

nlohmann::json askRoutes(const std::string&)
{
    return ask(RTM_GETROUTE, addRoute);
}
} // namespace host
