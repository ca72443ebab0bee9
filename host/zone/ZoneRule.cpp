#include "host/zone/ZoneRule.h"

#include <algorithm>

namespace host
{
static constexpr int64_t kSecondsOfDay = 86400;
static constexpr int64_t kDaysOf400Years = 146097;

// Counts years from March, so that the day that leap years add is the last one; 719468 days lie between 1 March of
// year 0 and 1 January 1970.
int64_t daysFromCivil(int64_t year, int month, int day)
{
    year -= month <= 2;
    const int64_t era = (year >= 0 ? year : year - 399) / 400;
    const int64_t yearOfEra = year - era * 400;
    const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kDaysOf400Years + dayOfEra - 719468;
}

int64_t yearOfDay(int64_t days)
{
    int64_t year = 1970 + days * 400 / kDaysOf400Years;
    while (daysFromCivil(year, 1, 1) > days)
        --year;
    while (daysFromCivil(year + 1, 1, 1) <= days)
        ++year;
    return year;
}

static bool isLeap(int64_t year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

static int64_t dayOfWeekOfMonth(const ZoneDate& date, int64_t year)
{
    const int64_t first = daysFromCivil(year, date.month, 1);
    const int64_t next = date.month == 12 ? daysFromCivil(year + 1, 1, 1) : daysFromCivil(year, date.month + 1, 1);
    const int64_t weekday = ((first + 4) % 7 + 7) % 7; // 1 January 1970 was a Thursday
    int64_t day = first + (date.day - weekday + 7) % 7 + int64_t{date.week - 1} * 7;
    while (day >= next)
        day -= 7;
    return day;
}

// Local seconds since 1970 of a year's change.
static int64_t changeOf(const ZoneDate& date, int64_t year)
{
    int64_t day = daysFromCivil(year, 1, 1);
    if (date.kind == ZoneDate::Kind::Month)
        day = dayOfWeekOfMonth(date, year);
    else if (date.kind == ZoneDate::Kind::Julian)
        day += date.day - 1 + (isLeap(year) && date.day >= 60);
    else
        day += date.day;
    return day * kSecondsOfDay + date.secondsOfDay;
}

bool ZoneRule::isDaylight(int64_t seconds) const
{
    if (!hasDaylight)
        return false;
    const int64_t days = seconds / kSecondsOfDay - (seconds % kSecondsOfDay < 0);
    const int64_t year = yearOfDay(days);
    const int64_t from = changeOf(begin, year) - standardOffset;
    const int64_t to = changeOf(end, year) - daylightOffset;
    // South of the equator the year begins and ends with it.
    return from <= to ? seconds >= from && seconds < to : seconds < to || seconds >= from;
}

namespace
{
// Reads a rule from left to right; once something is wrong, everything after it is too.
class RuleReader
{
public:
    explicit RuleReader(std::string_view text) : text_(text) {}

    bool isGood() const { return isGood_; }
    bool isAtEnd() const { return text_.empty(); }
    bool next(char character)
    {
        if (text_.empty() || text_.front() != character)
            return false;
        text_.remove_prefix(1);
        return true;
    }
    void expect(char character) { isGood_ = next(character) && isGood_; }
    std::string name();
    int32_t time(int mostHours);
    ZoneDate date();

private:
    int number(int least, int most);

    std::string_view text_;
    bool isGood_ = true;
};

bool isLetter(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::string RuleReader::name()
{
    const bool isQuoted = next('<');
    const auto belongs = [isQuoted](char character) {
        return isLetter(character) || (isQuoted && (isDigit(character) || character == '+' || character == '-'));
    };
    const auto end = std::find_if_not(text_.begin(), text_.end(), belongs);
    std::string name(text_.begin(), end);
    text_.remove_prefix(name.size());
    if (isQuoted)
        expect('>');
    isGood_ = isGood_ && name.size() >= 3;
    return name;
}

int RuleReader::number(int least, int most)
{
    int number = 0;
    size_t digits = 0;
    for (; digits < text_.size() && isDigit(text_[digits]) && digits < 4; ++digits)
        number = number * 10 + (text_[digits] - '0');
    text_.remove_prefix(digits);
    isGood_ = isGood_ && digits != 0 && number >= least && number <= most;
    return isGood_ ? number : least;
}

// [+-]HH[:MM[:SS]] in seconds.
int32_t RuleReader::time(int mostHours)
{
    const bool isNegative = next('-');
    if (!isNegative)
        next('+');
    int32_t seconds = number(0, mostHours) * 3600;
    for (int unit = 60; unit >= 1 && next(':'); unit /= 60)
        seconds += number(0, 59) * unit;
    return isNegative ? -seconds : seconds;
}

ZoneDate RuleReader::date()
{
    ZoneDate date;
    if (next('M')) {
        date.month = number(1, 12);
        expect('.');
        date.week = number(1, 5);
        expect('.');
        date.day = number(0, 6);
    } else if (next('J')) {
        date.kind = ZoneDate::Kind::Julian;
        date.day = number(1, 365);
    } else {
        date.kind = ZoneDate::Kind::DayOfYear;
        date.day = number(0, 365);
    }
    if (next('/'))
        date.secondsOfDay = time(167);
    return date;
}
} // namespace

std::optional<ZoneRule> parseZoneRule(std::string_view text)
{
    RuleReader reader(text);
    ZoneRule rule;
    rule.standardName = reader.name();
    rule.standardOffset = -reader.time(24); // the text counts hours west
    if (reader.isAtEnd())
        return reader.isGood() ? std::optional(rule) : std::nullopt;

    rule.hasDaylight = true;
    rule.daylightName = reader.name();
    const bool isOneHour = reader.isAtEnd() || reader.next(',');
    rule.daylightOffset = isOneHour ? rule.standardOffset + 3600 : -reader.time(24);
    if (!isOneHour)
        reader.expect(',');
    rule.begin = reader.date();
    reader.expect(',');
    rule.end = reader.date();
    return reader.isGood() && reader.isAtEnd() ? std::optional(rule) : std::nullopt;
}
} // namespace host
