#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    text(KERNEL_MODULE_NAME, "Name", 64, PLAIN, "`/proc/modules`"),
    text(KERNEL_MODULE_VERSION, "Version", 128, PLAIN, "`/sys/module/*/version`"),
    quad(KERNEL_MODULE_SIZE_BYTES, "Size Bytes", "bytes", PLAIN, "`/proc/modules`"),
    yesNo(KERNEL_MODULE_SIGNED, "Signed", PLAIN, "`/proc/modules`, taint without E; where the kernel checks signatures"),
    yesNo(KERNEL_MODULE_OUT_OF_TREE, "Out Of Tree", PLAIN, "`/proc/modules`, taint with O"),
};
// clang-format on

constexpr uint32_t kKeys[] = {KERNEL_MODULE_NAME};

static_assert(isWellFormed(kAttributes), "Kernel Module: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Kernel Module: key without attribute");
} // namespace

constexpr GroupDef KERNEL_MODULE_GROUP = {
    .id = GROUP_KERNEL_MODULE,
    .name = "Kernel Module",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "`/proc/modules` and `/sys/module`: a row a loaded module",
};
} // namespace report
