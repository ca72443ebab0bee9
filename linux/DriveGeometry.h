#pragma once

#include <cstdint>

/// The layout of a drive, as any of the probes knows it; 0 where it does not.
struct DriveGeometry {
    uint32_t heads = 0;
    uint32_t cylinders = 0;
    uint32_t sectors = 0; // per track
    uint64_t kilobytes = 0;

    /// What the report shows: 32 bits of it.
    uint32_t megabytes() const { return static_cast<uint32_t>(kilobytes >> 10); }
};
