#pragma once

#include <cstdint>

#include <netinet/in.h>

/// The reverse look-ups of one scan. Name servers that do not answer hold each of them for half a minute; together they
/// hold the scan no longer than 30 seconds and the look-up that exceeds these.
class ReverseLookups
{
public:
    /// The official name of an address; null when it has none, and for every address once the time is used up. The text
    /// is the C library's and lasts until the next look-up.
    const char* nameOf(in_addr address);

private:
    int64_t nanoseconds_ = 0; // that look-ups have taken
};
