#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What a monitor tells of itself: Extended Display Identification Data, structure 1 revision 0 to 4 (VESA E-EDID
// Standard, Release A).

namespace host
{
/// Lowest and highest; the first is never above the second.
struct ScanRange {
    uint32_t lowest = 0;
    uint32_t highest = 0;
};

/// A monitor as its first block describes it. Texts are empty and numbers absent where the block does not tell them, or
/// tells what cannot be.
struct Edid {
    uint8_t revision = 0;
    std::string manufacturer; // three capital letters, as the UEFI forum registers them
    uint16_t product = 0;
    std::string name;
    std::string serialNumber;
    std::optional<uint32_t> week, year;    // of manufacture
    std::optional<uint32_t> width, height; // mm, both or none
    std::optional<ScanRange> verticalHz, horizontalKHz;
    std::optional<uint32_t> pixelClockMHz; // the highest
    std::string preferredMode;             // "1920x1200@59.95", "1920x1080i@50"; without a rate where none can be told

    /// Diagonal in inches, rounded; absent without a size.
    std::optional<uint32_t> diagonalInches() const;
};

/// Reads the first block; what follows it (CTA-861, DisplayID and other extension blocks) describes signals and not the
/// monitor, and is passed over. Absent when the bytes are no such block: too few, another header or structure, a wrong
/// checksum.
std::optional<Edid> parseEdid(std::string_view bytes);
} // namespace host
