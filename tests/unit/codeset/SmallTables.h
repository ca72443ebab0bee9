#pragma once

#include "codeset/TableLayout.h"
#include "codeset/tables/TableImage.h"

// Tables of a few characters, made by hand from the layout's description.

namespace SmallTables
{

using namespace TableLayout;

inline TableImage header(Family family, const char* name)
{
    TableImage table;
    table.putText(kMagicOffset, "ucv");
    table.putText(kNameOffset, name);
    table.put16(kFamilyOffset, static_cast<unsigned>(family));
    return table;
}

/// U+0080 to U+00FF reversed to the given codes of 16 or 32 bits, all others unmapped.
template <class Code>
void addReverse(TableImage& table, const std::vector<std::pair<unsigned, Code>>& codes)
{
    std::vector<Code> row(kReverseRowCodes);
    for (const auto& [character, code] : codes)
        row[character] = code;
    table.put32(kReverseIndexOffset, static_cast<uint32_t>(table.append(std::vector<uint16_t>{0, kNoValue})));
    table.put32(kReverseIndexCount, 2);
    table.put32(kReverseRowsOffset, static_cast<uint32_t>(table.append(row)));
    table.put32(kReverseRowsCount, 1);
}

/// The byte E9 is U+00E9, all others are unmapped.
inline std::string singleByte(Family family = Family::AsciiSbcs)
{
    TableImage table = header(family, "SMALLSB");
    for (unsigned byte = 0; byte < 256; ++byte)
        table.put16(kRowsOffset + 2 * byte, byte == 0xE9 ? 0xE9 : kNoValue);
    addReverse<uint16_t>(table, {{0xE9, uint16_t{0xE9}}});
    return table.bytes();
}

/// A1 is U+00E9 alone; B0 A1 is U+4E00, and so is 0xB0 0xA1 between shifts in the EBCDIC family. C0 is a lead byte
/// without characters.
inline std::string doubleByte(Family family = Family::AsciiDbcs)
{
    TableImage table = header(family, "SMALLDB");
    std::vector<uint16_t> rows(512, kNoValue);
    rows[0xA1] = 0xE9;
    rows[256 + 0xA1] = 0x4E00;
    for (unsigned byte = 1; byte < 256; ++byte)
        table.put16(kRowsOffset + 2 * byte, kNoValue);
    table.put16(kRowsOffset + 2 * 0xB0, kDbcsRowSize / kDbcsRowUnit);
    table.put8(kClassesOffset + 0xA1, kClassSingle);
    table.put8(kClassesOffset + 0xB0, kClassLead2);
    table.put8(kClassesOffset + 0xC0, kClassLead2);
    table.put32(kMappingAreaOffset, static_cast<uint32_t>(table.append(rows)));
    addReverse<uint16_t>(table, {{0xE9, uint16_t{0xA1}}, {0xEA, uint16_t{0xB0A1}}});
    return table.bytes();
}

/// A1 is U+00E9, B0 A1 is U+4E00, 8F A1 A1 is U+4E01, 8E A1 A1 A1 is U+20000.
inline std::string multiByte()
{
    TableImage table = header(Family::AsciiMbcs, "SMALLMB");
    std::vector<uint32_t> rows(7 * 128, kMbcsNone);
    const auto set = [&](unsigned row, uint32_t value) { rows[row * 128 + 0x21] = value; };
    set(0, 0xE9);
    set(1, 0x4E00);
    set(2, 3);
    set(3, 0x4E01);
    set(4, 5);
    set(5, 6);
    set(6, 0x20000);
    for (unsigned byte = 1; byte < 256; ++byte)
        table.put16(kRowsOffset + 2 * byte, kNoValue);
    const struct {
        unsigned lead, row, length;
    } leads[] = {{0xA1, kNoValue, 1}, {0xB0, 1, 2}, {0x8F, 2, 3}, {0x8E, 4, 4}};
    for (const auto& lead : leads) {
        table.put16(kRowsOffset + 2 * lead.lead, lead.row);
        table.put8(kClassesOffset + lead.lead, lead.length);
    }
    table.put32(kMappingAreaOffset, static_cast<uint32_t>(table.append(rows)));
    addReverse<uint32_t>(table, {{0xE9, 0xA1u}, {0xEA, 0xB0A1u}, {0xEB, 0x8FA1A1u}, {0xEC, 0x8EA1A1A1u}});
    return table.bytes();
}

/// 81 40 (index 1) is U+00E9 from the value array, 81 41 to 81 43 are U+4E00 to U+4E02 by computation, 81 44 is of an
/// unknown kind.
inline std::string gb18030()
{
    TableImage table = header(Family::Gb18030, "SMALLGB");
    const size_t subHeader = table.append(std::vector<uint32_t>(kGbSubHeaderSize / 4));
    const std::vector<uint16_t> ranges = {1, 1, kGbKindValues, 0,      2, 4, kGbKindOffset, 0x4E00, 5, 5,
                                          3, 0, 0xFFFF,        0xFFFF, 0, 0};
    table.append(ranges);
    table.append(std::vector<uint16_t>(kGbBucketCount));
    table.append(std::vector<uint16_t>{0xE9, 0});
    table.put16(kGbSubHeaderOffset, static_cast<unsigned>(subHeader));
    table.put32(subHeader + kGbRangesBase, 0);
    table.put32(subHeader + kGbBucketsBase, static_cast<uint32_t>(ranges.size()));
    table.put32(subHeader + kGbValuesBase, static_cast<uint32_t>(ranges.size() + kGbBucketCount));
    addReverse<uint32_t>(table, {{0xE9, 0x8140u}, {0xEA, 0x81308130u}});
    return table.bytes();
}

/// All of them, for tests that damage tables.
inline std::vector<std::string> all()
{
    return {singleByte(), singleByte(Family::EbcdicSbcs), doubleByte(), doubleByte(Family::EbcdicDbcs), multiByte(),
            gb18030()};
}

/// The bytes with a 16-bit or 32-bit word put in.
inline std::string with16(std::string bytes, size_t offset, unsigned value)
{
    bytes[offset] = static_cast<char>(value & 0xFF);
    bytes[offset + 1] = static_cast<char>(value >> 8 & 0xFF);
    return bytes;
}

inline std::string with32(const std::string& bytes, size_t offset, uint32_t value)
{
    return with16(with16(bytes, offset, value & 0xFFFF), offset + 2, value >> 16);
}

} // namespace SmallTables
