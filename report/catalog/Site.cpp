#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    text(SITE_NAME, "Name", 255, PLAIN, "before the \"=\""),
    text(SITE_VALUE, "Value", 1024, PLAIN, "behind the \"=\""),
};
// clang-format on

constexpr uint32_t kKeys[] = {SITE_NAME};

static_assert(isWellFormed(kAttributes), "Site: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Site: key without attribute");
} // namespace

constexpr GroupDef SITE_GROUP = {
    .id = GROUP_SITE,
    .name = "Site",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "`/etc/invhw/site.d/*.conf`, lines \"name = value\": what the operator knows",
};
} // namespace report
