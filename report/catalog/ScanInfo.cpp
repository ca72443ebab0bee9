#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(SCAN_INFO_MANUFACTURER, PLAIN, "", "fixed"),
    known(SCAN_INFO_MAJOR_VERSION, PLAIN, "", "version of invhwctl, before the first dot"),
    known(SCAN_INFO_MINOR_VERSION, PLAIN, "", "version of invhwctl, between the first two dots"),
    known(SCAN_INFO_SCAN_DATE, VOLATILE, "", "clock at the scan's start"),
    known(SCAN_INFO_BUILD, PLAIN, "", "name and version of the program"),
    known(SCAN_INFO_UPTIME, VOLATILE, "seconds", "`/proc/uptime`"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "ScanInfo: bad row");
} // namespace

constexpr GroupDef SCAN_INFO_GROUP = {
    .id = GROUP_SCAN_INFO,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "the program and the clock",
};
} // namespace report
