// Sources: the C library, for the time zone and the locale that the environment of the scan asks for. They need not
// be those of the machine's users.

#include "linux/RegionalGroup.h"

#include <clocale>
#include <ctime>

#include "com/VexDebug.h"
#include "com/VexEnumValues.h"
#include "com/VexTable.h"

RegionalGroup::RegionalGroup() : VexGroup(GROUP_REGIONAL, 1) {}

VexTable* RegionalGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_REGIONAL, "Regional");
    auto* const table = new VexTable(getGroupId(), getGroupVersion());

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
    const uint32_t sign = west ? REGIONAL_MINUS : REGIONAL_PLUS;
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone seconds=%ld", seconds);
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone plus/minus=%s", west ? "-" : "+");
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone daylight=%d", daylight);
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone tzname=%s", tzname[0]);
    VEX_LOG(DEBUG_REGIONAL, VEX_LEVEL_DETAIL, "\nTimezone tzname daylight=%s", tzname[1]);

    auto* const row = new VexTableRow;
    row->addString(REGIONAL_LOCALE, locale);
    row->addULong(REGIONAL_TIME_ZONE_SECONDS, static_cast<uint32_t>(seconds));
    row->addULong(REGIONAL_TIME_ZONE_PLUS_MINUS, sign);
    row->addULong(REGIONAL_DAYLIGHT, daylight != 0 ? REGIONAL_DAYLIGHT_TRUE : REGIONAL_DAYLIGHT_FALSE);
    row->addString(REGIONAL_TIME_ZONE_NAME, tzname[0]);
    row->addString(REGIONAL_TIME_ZONE_DAYLIGHT_NAME, tzname[1]);
    table->addRow(row);
    return table;
}
