#pragma once

#include <cstdint>

// How family 10 numbers its characters, of two bytes and of four, in one sequence. Behind a lead byte of 0x81 to 0xFE
// stands 0x40 to 0xFE in a character of two bytes; 0x30 to 0x39, 0x81 to 0xFE and 0x30 to 0x39 in one of four.

namespace Gb18030
{

constexpr uint32_t kTrails = 0xFE - 0x40 + 1;
constexpr uint32_t kDigits = 0x39 - 0x30 + 1;
constexpr uint32_t kThirds = 0xFE - 0x81 + 1;

/// The number of a character of two bytes, from 1. One below 0 wraps, to a number that no character has.
constexpr uint32_t numberOf(uint32_t lead, uint32_t trail)
{
    return (lead - 0x81) * kTrails + trail - 0x40 + 1;
}

/// The place of a character among those of four bytes, counted from where bytes of 0 would stand.
constexpr uint32_t placeOf(uint32_t lead, uint32_t second, uint32_t third, uint32_t fourth)
{
    return (((lead & 0x7F) * kDigits + second) * kThirds + third) * kDigits + fourth;
}

/// The first character of four bytes has the number behind the last one of two.
constexpr uint32_t kFirstOfFour = numberOf(0xFE, 0xFE) + 1;

/// The number of a character of four bytes.
constexpr uint32_t numberOf(uint32_t lead, uint32_t second, uint32_t third, uint32_t fourth)
{
    return placeOf(lead, second, third, fourth) - placeOf(0x81, 0x30, 0x81, 0x30) + kFirstOfFour;
}

/// The bytes of the character of four, the first one in the highest place, that stands n places behind the first one
/// with that lead byte.
constexpr uint32_t bytesBehind(uint32_t lead, uint32_t n)
{
    return (lead + n / (kDigits * kThirds * kDigits)) << 24 | (0x30 + n / (kThirds * kDigits) % kDigits) << 16 |
           (0x81 + n / kDigits % kThirds) << 8 | (0x30 + n % kDigits);
}

/// The lead byte of U+10000, and its number: from there on the characters follow the code points.
constexpr uint32_t kSupplementaryLead = 0x90;
constexpr uint32_t kFirstSupplementary = numberOf(kSupplementaryLead, 0x30, 0x81, 0x30);
constexpr uint32_t kLastSupplementary = kFirstSupplementary + (0x10FFFF - 0x10000);

static_assert(kFirstOfFour == 24067 && kFirstSupplementary == 213067 && kLastSupplementary == 1261642);

} // namespace Gb18030
