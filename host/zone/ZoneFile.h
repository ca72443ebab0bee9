#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/zone/ZoneRule.h"

namespace host
{
/// A kind of local time.
struct ZoneType {
    int32_t offset = 0; // seconds east of UTC
    bool isDaylight = false;
    std::string name;
};

/// When another kind of local time begins.
struct ZoneTransition {
    int64_t at = 0; // seconds since 1970 UTC
    size_t type = 0;
};

/// A leap second, in files whose seconds count them.
struct ZoneLeap {
    int64_t at = 0;
    int32_t correction = 0; // leap seconds from then on
};

/// A TZif file (RFC 8536), of version 2 and later its 64-bit half.
struct ZoneFile {
    std::vector<ZoneTransition> transitions; // in the order of time
    std::vector<ZoneType> types;             // at least one
    std::vector<ZoneLeap> leaps;
    std::optional<ZoneRule> rule; // after the last transition
};

/// Absent when the content is no such file or contradicts itself.
std::optional<ZoneFile> parseZoneFile(std::string_view content);
} // namespace host
