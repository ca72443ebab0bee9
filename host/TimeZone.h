#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/zone/ZoneFile.h"
#include "report/Report.h"

namespace host
{
class Root;

/// The machine's time zone: /etc/localtime of its root (RFC 8536), UTC without one. The environment of whoever runs the
/// scan has no say, so that a recording gives the same times anywhere.
class TimeZone
{
public:
    /// UTC.
    TimeZone();
    static TimeZone of(const Root& root);
    /// From the content of a TZif file; UTC when it is none.
    static TimeZone parse(std::string_view tzif);

    /// Local civil time of seconds since 1970 UTC, with its offset; times outside of the years 1 to 9998 are their
    /// first or last second.
    report::DateTime local(int64_t seconds) const;

    // Of the present rule: seconds east of UTC in standard time, names, whether daylight-saving time is used.
    int32_t standardOffset() const { return present_.standardOffset; }
    std::string standardName() const { return present_.standardName; }
    std::string daylightName() const { return present_.daylightName; }
    bool hasDaylight() const { return present_.hasDaylight; }

private:
    explicit TimeZone(ZoneFile file);
    int32_t offsetAt(int64_t seconds, int64_t leapSeconds) const;

    ZoneFile file_;
    ZoneRule present_; // its dates are those of the file's rule alone
};
} // namespace host
