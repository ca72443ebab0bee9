#include "linux/RegionalGroup.h"

#include <clocale>
#include <ctime>

#include "com/VexDebug.h"
#include "com/VexTable.h"

// Values of REGIONAL_TZ_PLUS_MINUS and REGIONAL_TZ_DAYLIGHT.
static constexpr uint32_t kEastOrUtc = 1;
static constexpr uint32_t kWest = 2;
static constexpr uint32_t kHasDaylightRule = 1;
static constexpr uint32_t kNoDaylightRule = 2;

RegionalGroup::RegionalGroup() : VexGroup(GROUP_REGIONAL, 1) {}

VexTable* RegionalGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_REGIONAL, "Regional");
    VexTable* table = new VexTable(getGroupId(), getGroupVersion());

    tzset();
    // Adopts the environment's setting for all that follows in this process, too.
    const char* locale = setlocale(LC_CTYPE, "");
    if (locale == nullptr) {
        VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nsetlocale returned NULL");
        locale = "";
    }
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nLC_CTYPE locale=%s", locale);

    // The library counts seconds west of UTC.
    const bool west = timezone > 0;
    const long seconds = west ? timezone : -timezone;
    const uint32_t sign = west ? kWest : kEastOrUtc;
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone seconds=%ld", seconds);
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone plus/minus=%s", west ? "-" : "+");
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone daylight=%d", daylight);
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone tzname=%s", tzname[0]);
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone tzname daylight=%s", tzname[1]);

    VexTableRow* row = new VexTableRow;
    row->addString(REGIONAL_LOCALE, locale);
    row->addULong(REGIONAL_TIME_ZONE_SECONDS, static_cast<uint32_t>(seconds));
    row->addULong(REGIONAL_TIME_ZONE_PLUS_MINUS, sign);
    row->addULong(REGIONAL_DAYLIGHT, daylight != 0 ? kHasDaylightRule : kNoDaylightRule);
    row->addString(REGIONAL_TIME_ZONE_NAME, tzname[0]);
    row->addString(REGIONAL_TIME_ZONE_DAYLIGHT_NAME, tzname[1]);
    table->addRow(row);
    return table;
}
