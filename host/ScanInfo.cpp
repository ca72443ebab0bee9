// Scan Info: which program made this report, and when.

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/Scan.h"
#include "host/TimeZone.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
void collectScanInfo(const Machine& machine, Collection& collection)
{
    constexpr const char* kUptime = "/proc/uptime"; // "350735.47 234388.90"
    RowBuilder row(GROUP_SCAN_INFO);
    row.text(SCAN_INFO_MANUFACTURER, "InvHW", "");
    row.number(SCAN_INFO_MAJOR_VERSION, kMajorVersion, "");
    row.number(SCAN_INFO_MINOR_VERSION, kMinorVersion, "");
    row.dateTime(SCAN_INFO_SCAN_DATE, machine.zone.local(machine.kernel.clock()), "clock");
    row.text(SCAN_INFO_BUILD, kProgram, "");
    row.number(SCAN_INFO_UPTIME, report::leadingNumber(machine.root.line(kUptime).value_or("")), kUptime);
    collection.add(std::move(row));
}
} // namespace host
