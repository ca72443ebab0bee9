// Family 3: ASCII, and characters of one to four bytes whose length the first byte tells (single shifts are such first
// bytes). All bytes of them are 0x80 or above.

#include "codeset/Convert.h"

struct AsciiMbcsReader {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    const CodeTable& table;
    const unsigned char* const area;
    const unsigned char* const classes;
    explicit AsciiMbcsReader(const kst_code_set& set)
        : table(*set.table), area(table.at(load32(table.at(TableLayout::kMappingAreaOffset)))),
          classes(table.at(TableLayout::kClassesOffset))
    {
    }

    static uint32_t entry(const unsigned char* row, Unit trail)
    {
        return trail < 0x80 ? TableLayout::kMbcsNone : load32(row + 4 * (trail - size_t{0x80}));
    }

    Decoded read(const Unit* in, const Unit* end) const
    {
        const uint32_t length = classes[*in];
        if (length == 0 || length > TableLayout::kMaxCodeLength)
            return {kUnmapped, 1};
        if (static_cast<size_t>(end - in) < length)
            return kIncompleteInput;
        if (length == 1)
            return {entry(table.at(table.rowOffsets[0]), *in), 1};
        uint32_t value = entry(table.at(table.rowOffsets[*in]), in[1]);
        for (uint32_t i = 2; i < length && value != TableLayout::kMbcsNone; ++i)
            value = entry(area + size_t{value} * TableLayout::kMbcsRowSize, in[i]);
        return {value, length};
    }
};

static_assert(TableLayout::kMbcsNone == kUnmapped, "an absent entry reads as an unknown character");

using AsciiMbcsWriter = TableWriter<ReverseLookUp<uint32_t>, 4>;

static constexpr auto ascii_mbcs_to_utf8_r = convert<AsciiMbcsReader, Utf8Writer>;
static constexpr auto ascii_mbcs_from_utf8_r = convert<Utf8Reader, AsciiMbcsWriter>;
static constexpr auto ascii_mbcs_to_ucs2_r = convert<AsciiMbcsReader, Ucs2Writer>;
static constexpr auto ascii_mbcs_from_ucs2_r = convert<Ucs2Reader, AsciiMbcsWriter>;

const ConverterFamily kAsciiMbcs = {ascii_mbcs_to_utf8_r, ascii_mbcs_from_utf8_r, ascii_mbcs_to_ucs2_r,
                                    ascii_mbcs_from_ucs2_r};
