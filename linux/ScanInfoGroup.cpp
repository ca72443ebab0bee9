// Sources: the clock, and the login records for the time since the system reached its run level, a little after
// boot. The rest is constant.

#include "linux/ScanInfoGroup.h"

#include <ctime>
#include <sys/time.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/system/LoginRecords.h"

namespace
{

// Part of the report's contract: none of these is computed.
constexpr char kManufacturer[] = "Quorvane Systems Inc.";
constexpr uint32_t kMajorVersion = 4;
constexpr uint32_t kMinorVersion = 2;
constexpr char kBuild[] = "05/10/06 03:07:11";

} // namespace

ScanInfoGroup::ScanInfoGroup() : VexGroup(GROUP_SCAN_INFO, 1) {}

VexTable* ScanInfoGroup::getTable()
{
    struct timeval now {
    };
    gettimeofday(&now, nullptr);
    const VexGroupFrame frame(DEBUG_SCAN_INFO, "ScanInfo");
    const std::optional<LoginRecord> runLevel = findRunLevelRecord();

    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    auto* const row = new VexTableRow;
    row->addString(SCAN_INFO_MANUFACTURER, kManufacturer);
    row->addULong(SCAN_INFO_MAJOR_VERSION, kMajorVersion);
    row->addULong(SCAN_INFO_MINOR_VERSION, kMinorVersion);
    row->addDateTime(SCAN_INFO_SCAN_DATE, static_cast<long>(now.tv_sec));
    row->addString(SCAN_INFO_BUILD, kBuild);
    if (runLevel)
        row->addULong(SCAN_INFO_UPTIME, static_cast<uint32_t>(time(nullptr) - runLevel->seconds));
    table->addRow(row);
    return table;
}
