#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host
{
/// When a year's clocks change, in local time.
struct ZoneDate {
    enum class Kind {
        Month,    // the day of a week of a month: M10.5.0 is the last Sunday of October
        Julian,   // day 1 to 365, 29 February never counted: J60 is 1 March
        DayOfYear // day 0 to 365
    };
    Kind kind = Kind::Month;
    int month = 1;                   // 1 to 12
    int week = 1;                    // 1 to 5, 5 the last one
    int day = 0;                     // of the week from 0 for Sunday, or of the year
    int32_t secondsOfDay = 2 * 3600; // from -167 to 167 hours (RFC 8536, 3.3.1)
};

/// A time zone's rule for all years (POSIX, "TZ" of the environment variables; RFC 8536, 3.3):
/// "CET-1CEST,M3.5.0,M10.5.0/3".
struct ZoneRule {
    std::string standardName;
    int32_t standardOffset = 0; // seconds east of UTC
    bool hasDaylight = false;
    std::string daylightName;
    int32_t daylightOffset = 0;
    ZoneDate begin; // of daylight-saving time, told in standard time
    ZoneDate end;   // told in daylight-saving time

    /// Whether daylight-saving time is used at a time: seconds since 1970 UTC, from year 0 to 9999.
    bool isDaylight(int64_t seconds) const;
};

/// Absent when the text is no such rule.
std::optional<ZoneRule> parseZoneRule(std::string_view text);

/// Days from 1 January 1970 to a day of the Gregorian calendar; month from 1.
int64_t daysFromCivil(int64_t year, int month, int day);
/// The year in which a day lies that is so many days after 1 January 1970.
int64_t yearOfDay(int64_t days);
} // namespace host
