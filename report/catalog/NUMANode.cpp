#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    number(NUMA_NODE_NODE, "Node", "", PLAIN, "number of the folder `/sys/devices/system/node/node*`"),
    number(NUMA_NODE_TOTAL_MEMORY, "Total Memory", "kB", PLAIN, "`/sys/devices/system/node/node*/meminfo`, \"MemTotal\""),
    text(NUMA_NODE_PROCESSORS, "Processors", 4096, PLAIN, "`/sys/devices/system/node/node*/cpulist`"),
    text(NUMA_NODE_DISTANCES, "Distances", 4096, PLAIN, "`/sys/devices/system/node/node*/distance`"),
};
// clang-format on

constexpr uint32_t kKeys[] = {NUMA_NODE_NODE};

static_assert(isWellFormed(kAttributes), "NUMA Node: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "NUMA Node: key without attribute");
} // namespace

constexpr GroupDef NUMA_NODE_GROUP = {
    .id = GROUP_NUMA_NODE,
    .name = "NUMA Node",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "`/sys/devices/system/node`: a row a node",
};
} // namespace report
