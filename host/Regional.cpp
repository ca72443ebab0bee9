// Regional: the machine's locale and time zone, from its own files and not from the environment of whoever runs the
// scan.

#include <cstdlib>

#include "com/VexEnumValues.h"
#include "host/Collectors.h"
#include "host/Root.h"
#include "host/TimeZone.h"
#include "host/system/SystemFiles.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
void collectRegional(const Machine& machine, Collection& collection)
{
    constexpr std::string_view kZone = "/etc/localtime";
    const TimeZone& zone = machine.zone;
    RowBuilder row(GROUP_REGIONAL);
    row.text(REGIONAL_LOCALE, localeOf(machine.root, "LC_CTYPE"));
    if (machine.root.exists(kZone)) {
        const int32_t offset = zone.standardOffset();
        row.number(REGIONAL_TIME_ZONE_SECONDS, static_cast<uint64_t>(std::abs(offset)), kZone);
        row.number(REGIONAL_TIME_ZONE_PLUS_MINUS, offset < 0 ? REGIONAL_MINUS : REGIONAL_PLUS, kZone);
        row.number(REGIONAL_DAYLIGHT, zone.hasDaylight() ? REGIONAL_DAYLIGHT_TRUE : REGIONAL_DAYLIGHT_FALSE, kZone);
        row.text(REGIONAL_TIME_ZONE_NAME, zone.standardName(), kZone);
        row.text(REGIONAL_TIME_ZONE_DAYLIGHT_NAME, zone.daylightName(), kZone);
    }
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
