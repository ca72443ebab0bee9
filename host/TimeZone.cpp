#include "host/TimeZone.h"

#include <algorithm>

#include "host/Root.h"

namespace host
{
static constexpr std::string_view kLocalTime = "/etc/localtime";
static constexpr size_t kFileLimit = size_t{1024} * 1024;
static constexpr int64_t kFirstSecond = -62135596800; // 0001-01-01 00:00:00
static constexpr int64_t kLastSecond = 253370764799;  // 9998-12-31 23:59:59

// What a file without a rule uses at its end: the last kind of standard time, and daylight-saving time when it is one
// of the last two.
static ZoneRule lastRule(const ZoneFile& file)
{
    ZoneRule rule;
    const size_t count = file.transitions.size();
    const ZoneType* standard = &file.types.front();
    for (size_t i = 0; i < count; ++i) {
        const ZoneType& type = file.types[file.transitions[i].type];
        if (!type.isDaylight)
            standard = &type;
        else if (i + 2 >= count) {
            rule.hasDaylight = true;
            rule.daylightName = type.name;
            rule.daylightOffset = type.offset;
        }
    }
    rule.standardName = standard->name;
    rule.standardOffset = standard->offset;
    return rule;
}

TimeZone::TimeZone() : TimeZone(ZoneFile{{}, {{0, false, "UTC"}}, {}, {}}) {}

TimeZone::TimeZone(ZoneFile file) : file_(std::move(file)), present_(file_.rule ? *file_.rule : lastRule(file_)) {}

TimeZone TimeZone::parse(std::string_view tzif)
{
    std::optional<ZoneFile> file = parseZoneFile(tzif);
    return file ? TimeZone(std::move(*file)) : TimeZone();
}

TimeZone TimeZone::of(const Root& root)
{
    const std::optional<std::string> file = root.read(kLocalTime, kFileLimit);
    return file ? parse(*file) : TimeZone();
}

// The last one that is not after a time, or null.
template <class T>
static const T* lastUntil(const std::vector<T>& list, int64_t seconds)
{
    const auto after =
        std::upper_bound(list.begin(), list.end(), seconds, [](int64_t at, const T& one) { return at < one.at; });
    return after == list.begin() ? nullptr : &*(after - 1);
}

// The times of a file's transitions count its leap seconds, those of its rule do not.
int32_t TimeZone::offsetAt(int64_t seconds, int64_t leapSeconds) const
{
    const ZoneTransition* transition = lastUntil(file_.transitions, seconds);
    const bool isRuled = file_.transitions.empty() || transition == &file_.transitions.back();
    if (file_.rule && isRuled)
        return file_.rule->isDaylight(seconds - leapSeconds) ? file_.rule->daylightOffset : file_.rule->standardOffset;
    return file_.types[transition != nullptr ? transition->type : 0].offset;
}

static report::DateTime civil(int64_t seconds)
{
    const int64_t days = seconds / 86400 - (seconds % 86400 < 0);
    const int64_t secondOfDay = seconds - days * 86400;
    const int64_t year = yearOfDay(days);
    int month = 12;
    while (daysFromCivil(year, month, 1) > days)
        --month;
    report::DateTime time;
    time.year = static_cast<int32_t>(year);
    time.month = static_cast<uint8_t>(month);
    time.day = static_cast<uint8_t>(days - daysFromCivil(year, month, 1) + 1);
    time.hour = static_cast<uint8_t>(secondOfDay / 3600);
    time.minute = static_cast<uint8_t>(secondOfDay / 60 % 60);
    time.second = static_cast<uint8_t>(secondOfDay % 60);
    return time;
}

report::DateTime TimeZone::local(int64_t seconds) const
{
    seconds = std::clamp(seconds, kFirstSecond, kLastSecond);
    const ZoneLeap* leap = lastUntil(file_.leaps, seconds);
    const int64_t leapSeconds = leap != nullptr ? leap->correction : 0;
    const int32_t offset = offsetAt(seconds, leapSeconds);
    report::DateTime time = civil(seconds - leapSeconds + offset);
    const bool isFirst = leap == file_.leaps.data();
    if (leap != nullptr && leap->at == seconds && leap->correction > (isFirst ? 0 : leap[-1].correction))
        ++time.second; // the leap second itself is second 60
    time.offsetSeconds = offset;
    return time;
}
} // namespace host
