#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
constexpr const char* kResults[] = {"Collected", "Empty", "No Source", "Refused", "Timed Out", "Failed", nullptr};

// clang-format off
constexpr AttributeDef kAttributes[] = {
    text(SCAN_STATUS_GROUP_NAME, "Group", 64, PLAIN, "name of the group"),
    word(SCAN_STATUS_RESULT, "Result", 16, kResults, PLAIN, "how its collection ended"),
    number(SCAN_STATUS_ROWS, "Rows", "", VOLATILE, "rows that came through whole"),
    number(SCAN_STATUS_MILLISECONDS, "Milliseconds", "ms", VOLATILE, "time that its collection took; left out with `--root`"),
    text(SCAN_STATUS_REASON, "Reason", 1024, PLAIN, "what was refused, missing or cut"),
};
// clang-format on

constexpr uint32_t kKeys[] = {SCAN_STATUS_GROUP_NAME};

static_assert(isWellFormed(kAttributes), "Scan Status: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Scan Status: key without attribute");
} // namespace

constexpr GroupDef SCAN_STATUS_GROUP = {
    .id = GROUP_SCAN_STATUS,
    .name = "Scan Status",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "the scan: a row a group",
};
} // namespace report
