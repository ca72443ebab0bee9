#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(PARALLEL_PORT_INDEX, PLAIN, "", "row number from 1"),
    known(PARALLEL_PORT_NAME, PLAIN, "", "name of the folder in `/proc/sys/dev/parport`"),
    text(PARALLEL_PORT_ADDRESS, "Address", 32, PLAIN, "`base-addr`"),
    number(PARALLEL_PORT_IRQ, "IRQ", "", PLAIN, "`irq`, unless -1"),
};
// clang-format on

constexpr uint32_t kKeys[] = {PARALLEL_PORT_NAME};

static_assert(isWellFormed(kAttributes), "ParallelPort: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "ParallelPort: key without attribute");
} // namespace

constexpr GroupDef PARALLEL_PORT_GROUP = {
    .id = GROUP_PARALLEL_PORT,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "`/sys/class/parport`, `/proc/sys/dev/parport`: a row a port",
};
} // namespace report
