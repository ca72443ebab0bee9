// Route: the kernel's routes but those of its local table and those that it only caches.

#include "host/Collectors.h"
#include "host/network/LinkFacts.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr uint32_t kLocalTable = 255;
constexpr uint32_t kCached = 0x200; // RTM_F_CLONED
constexpr size_t kMostRows = 10000;
constexpr std::string_view kSource = "RTM_GETROUTE";

RowBuilder routeRow(const Route& route, const std::map<uint32_t, std::string>& names)
{
    RowBuilder row(GROUP_ROUTE);
    row.number(ROUTE_TABLE, route.table, kSource);
    row.text(ROUTE_ADDRESS_FAMILY, familyName(route.isIPv6), kSource);
    row.text(ROUTE_DESTINATION, route.destination, kSource);
    row.number(ROUTE_PREFIX_LENGTH, route.prefixLength, kSource);
    row.text(ROUTE_GATEWAY, route.gateway, kSource);
    if (const auto name = names.find(route.link); name != names.end())
        row.text(ROUTE_INTERFACE, name->second, kSource);
    row.number(ROUTE_METRIC, route.metric, kSource);
    return row;
}
} // namespace

void collectRoute(const Machine& machine, Collection& collection)
{
    const std::map<uint32_t, std::string> names = linkNames(machine.kernel.links());
    size_t rows = 0;
    for (const Route& route : machine.kernel.routes()) {
        if (route.table == kLocalTable || (route.flags & kCached) != 0)
            continue;
        if (++rows > kMostRows) {
            collection.notes().note("more than " + std::to_string(kMostRows) + " routes");
            return;
        }
        collection.add(routeRow(route, names));
    }
}
} // namespace host
