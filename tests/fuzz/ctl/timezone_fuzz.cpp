// Any bytes as /etc/localtime: no crash, and every time is a civil one.

#include <cstdint>
#include <cstdlib>

#include "host/TimeZone.h"

static void check(const report::DateTime& t)
{
    if (t.year < 0 || t.year > 9999 || t.month < 1 || t.month > 12 || t.day < 1 || t.day > 31 || t.hour > 23 ||
        t.minute > 59 || t.second > 60 || !t.offsetSeconds)
        abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const host::TimeZone zone = host::TimeZone::parse({reinterpret_cast<const char*>(data), size});
    constexpr int64_t kSeconds[] = {0, 1, -1, 951782400, 1720000000, 4102444800, INT64_MIN, INT64_MAX, INT32_MIN};
    for (const int64_t seconds : kSeconds)
        check(zone.local(seconds));
    if (zone.hasDaylight() && zone.daylightName().empty())
        abort();
    return 0;
}
