#include "report/catalog/Groups.h"
#include "report/catalog/SharedTexts.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    number(ROUTE_TABLE, "Table", "", PLAIN, "netlink, RTM_GETROUTE, RTA_TABLE"),
    word(ROUTE_ADDRESS_FAMILY, "Address Family", 8, ADDRESS_FAMILY_WORDS, PLAIN, "netlink, RTM_GETROUTE"),
    text(ROUTE_DESTINATION, "Destination", 40, IDENTIFYING, "netlink, RTM_GETROUTE, RTA_DST"),
    number(ROUTE_PREFIX_LENGTH, "Prefix Length", "bits", PLAIN, "netlink, RTM_GETROUTE"),
    text(ROUTE_GATEWAY, "Gateway", 40, IDENTIFYING, "netlink, RTM_GETROUTE, RTA_GATEWAY"),
    text(ROUTE_INTERFACE, "Interface", 64, IDENTIFYING_IF_ADDRESS, "netlink, RTM_GETROUTE, RTA_OIF"),
    number(ROUTE_METRIC, "Metric", "", PLAIN, "netlink, RTM_GETROUTE, RTA_PRIORITY"),
};
// clang-format on

constexpr uint32_t kKeys[] = {ROUTE_TABLE,   ROUTE_ADDRESS_FAMILY, ROUTE_DESTINATION, ROUTE_PREFIX_LENGTH,
                              ROUTE_GATEWAY, ROUTE_INTERFACE,      ROUTE_METRIC};

static_assert(isWellFormed(kAttributes), "Route: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Route: key without attribute");
} // namespace

constexpr GroupDef ROUTE_GROUP = {
    .id = GROUP_ROUTE,
    .name = "Route",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "netlink: a row a route without table local and cached routes, at most 10,000",
};
} // namespace report
