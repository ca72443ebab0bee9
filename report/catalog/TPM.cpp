#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    text(TPM_NAME, "Name", 64, PLAIN, "name of the folder in `/sys/class/tpm`"),
    text(TPM_VERSION, "Version", 16, PLAIN, "`tpm_version_major`; else structure type 43, specification version"),
    text(TPM_MANUFACTURER, "Manufacturer", 64, PLAIN, "`caps`; else structure type 43, vendor"),
};
// clang-format on

constexpr uint32_t kKeys[] = {TPM_NAME};

static_assert(isWellFormed(kAttributes), "TPM: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "TPM: key without attribute");
} // namespace

constexpr GroupDef TPM_GROUP = {
    .id = GROUP_TPM,
    .name = "TPM",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "`/sys/class/tpm`: a row a chip",
};
} // namespace report
