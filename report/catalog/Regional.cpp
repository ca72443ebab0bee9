#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(REGIONAL_LOCALE, PLAIN, "", "`/etc/locale.conf` (else `/etc/default/locale`), LC_ALL, LC_CTYPE or LANG"),
    known(REGIONAL_TIME_ZONE_SECONDS, PLAIN, "seconds", "`/etc/localtime`: standard time's distance from UTC, without its sign"),
    known(REGIONAL_TIME_ZONE_PLUS_MINUS, PLAIN, "", "`/etc/localtime`: + east of or at UTC, - west of it"),
    known(REGIONAL_DAYLIGHT, PLAIN, "", "`/etc/localtime`: T when the zone has daylight-saving time, else F"),
    known(REGIONAL_TIME_ZONE_NAME, PLAIN, "", "`/etc/localtime`: abbreviation of standard time"),
    known(REGIONAL_TIME_ZONE_DAYLIGHT_NAME, PLAIN, "", "`/etc/localtime`: abbreviation of daylight-saving time"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "Regional: bad row");
} // namespace

constexpr GroupDef REGIONAL_GROUP = {
    .id = GROUP_REGIONAL,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "`/etc/locale.conf`, `/etc/default/locale` and the time zone of `/etc/localtime`",
};
} // namespace report
