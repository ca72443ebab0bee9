#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(INSTALLED_PATCHES_INDEX, PLAIN, "", "row number from 1"),
    known(INSTALLED_PATCHES_PATCH_ID, PLAIN, "", "name of the folder in `/sys/kernel/livepatch`"),
    known(INSTALLED_PATCHES_STATUS, PLAIN, "", "`enabled` and `transition`"),
    known(INSTALLED_PATCHES_SUPERSEDE, PLAIN, "", "not produced by invhwctl"),
    known(INSTALLED_PATCHES_PACKAGE_ID, PLAIN, "", "not produced by invhwctl"),
    known(INSTALLED_PATCHES_DESCRIPTION, PLAIN, "", "objects and functions that it patches"),
    known(INSTALLED_PATCHES_PUBLISHER, PLAIN, "", "not produced by invhwctl"),
    known(INSTALLED_PATCHES_ID, PLAIN, "", "MD5 digest of Patch ID and Description"),
};
// clang-format on

constexpr uint32_t kKeys[] = {INSTALLED_PATCHES_ID};

static_assert(isWellFormed(kAttributes), "InstalledPatches: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "InstalledPatches: key without attribute");
} // namespace

constexpr GroupDef INSTALLED_PATCHES_GROUP = {
    .id = GROUP_INSTALLED_PATCHES,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "`/sys/kernel/livepatch`: a row a live patch",
};
} // namespace report
