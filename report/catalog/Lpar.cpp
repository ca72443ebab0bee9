#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(LPAR_ID, IDENTIFYING, "", "`/proc/ppc64/lparcfg`, \"partition_id\"; else of a virtual machine or container the UUID of structure type 1 as 32 hexadecimal digits, else `/etc/machine-id`"),
    known(LPAR_SHAREDPOOL_ID, PLAIN, "", "`/proc/ppc64/lparcfg`, \"pool\""),
    known(LPAR_NODE_CAPACITY, PLAIN, "", "cores with a processor on line, `/sys/devices/system/cpu/cpu*/topology`"),
    known(LPAR_LPAR_CAPACITY, PLAIN, "", "processors in `/sys/devices/system/cpu/online`"),
    known(LPAR_SHAREDPOOL_CAPACITY, PLAIN, "", "`/proc/ppc64/lparcfg`, \"pool_capacity\""),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "Lpar: bad row");
} // namespace

constexpr GroupDef LPAR_GROUP = {
    .id = GROUP_LPAR,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "`/sys/devices/system/cpu`, `/proc/ppc64/lparcfg`",
};
} // namespace report
