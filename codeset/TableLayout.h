#pragma once

#include <cstddef>
#include <cstdint>

// The layout of a table file, described field by field in docs/CODESETS.md. Words are little-endian.

/// The converter family of a code set, the word at kFamilyOffset. Any other number passes bytes through.
enum class Family : uint16_t {
    AsciiSbcs = 1,
    AsciiDbcs = 2,
    AsciiMbcs = 3,
    EbcdicDbcs = 4,
    Utf8 = 6,
    EbcdicSbcs = 8,
    Gb18030 = 10,
};

namespace TableLayout
{

constexpr size_t kMinSize = 1760;
constexpr size_t kMaxSize = size_t{4} << 20; // the largest shipped table has 600 KB

// The header.
constexpr size_t kMappingAreaOffset = 0; // u32
constexpr size_t kMagicOffset = 8;
constexpr char kMagic[] = {'u', 'c', 'v'};
constexpr size_t kNameOffset = 16;
constexpr size_t kNameSize = 22;           // with the terminator
constexpr size_t kGbSubHeaderOffset = 38;  // u16
constexpr size_t kFamilyOffset = 48;       // u16
constexpr size_t kMarkerOffset = 50;       // u16
constexpr size_t kSubstitutionOffset = 52; // 16 bytes: two of the following
constexpr size_t kSubstitutionSize = 8;    // length, then up to kMaxCodeLength bytes, then zeros
constexpr size_t kReverseIndexOffset = 68; // u32, 0 = the table has no reverse arrays
constexpr size_t kReverseIndexCount = 72;  // u32
constexpr size_t kReverseRowsOffset = 76;  // u32
constexpr size_t kReverseRowsCount = 80;   // u32
constexpr size_t kRowsOffset = 736;        // u16[256]: single-byte values, or row numbers
constexpr size_t kClassesOffset = 1248;    // u8[256]

constexpr uint16_t kEbcdicSbcsMarker = 0x1100;
constexpr size_t kMaxCodeLength = 4;
constexpr uint16_t kNoValue = 0xFFFF; // no mapping, and no row

// Bytes of a single-byte or lead byte's class: the length of its characters.
constexpr unsigned char kClassSingle = 1;
constexpr unsigned char kClassLead2 = 2;

// Double-byte rows: 256 16-bit values for every trail byte; a row number counts units of 4 bytes.
constexpr size_t kDbcsRowSize = 512;
constexpr size_t kDbcsRowUnit = 4;

// Multi-byte rows: 128 32-bit entries for the trail bytes 0x80 to 0xFF; a row number counts rows.
constexpr size_t kMbcsRowSize = 512;
constexpr uint32_t kMbcsNone = 0xFFFFFFFF;

// GB18030: the 16-bit array behind the sub-header, and what lies in it.
constexpr size_t kGbSubHeaderSize = 32;
constexpr size_t kGbRangesBase = 16;  // u32 within the sub-header: index into the array, as the following
constexpr size_t kGbBucketsBase = 20; // u32
constexpr size_t kGbValuesBase = 24;  // u32
constexpr size_t kGbBucketCount = 128;
constexpr unsigned kGbBucketShift = 9;
constexpr size_t kGbRangeWords = 4;
constexpr uint32_t kGbIndexEnd = 65535; // indices from here on are not looked up in the table
constexpr uint16_t kGbKindValues = 1;
constexpr uint16_t kGbKindOffset = 2;

// Reverse arrays: rows of 256 codes, 16 bits wide, or 32 bits where a code can be longer than two bytes.
constexpr size_t kReverseRowCodes = 256;
constexpr uint32_t kMaxReverseRows = 0x1100; // every row up to U+10FFFF

constexpr size_t reverseCodeSize(Family family)
{
    return family == Family::AsciiMbcs || family == Family::Gb18030 ? 4 : 2;
}

} // namespace TableLayout

inline uint16_t load16(const unsigned char* bytes)
{
    return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

inline uint32_t load32(const unsigned char* bytes)
{
    return load16(bytes) | static_cast<uint32_t>(load16(bytes + 2)) << 16;
}
