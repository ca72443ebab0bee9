// Family 3: ASCII, and characters of one to four bytes whose length the first byte tells (single shifts are such first
// bytes). All bytes of them are 0x80 or above.

#include "codeset/TableText.h"

struct AsciiMbcsReader {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    static constexpr size_t kLongest = 4;
    static constexpr bool kSteady = false;
    const unsigned char* const bytes;
    const uint32_t* const rowOffsets;
    const unsigned char* const area;
    const unsigned char* const classes;
    explicit AsciiMbcsReader(const kst_code_set& set)
        : bytes(set.table->bytes.data()), rowOffsets(set.table->rowOffsets.data()),
          area(bytes + load32(bytes + TableLayout::kMappingAreaOffset)), classes(bytes + TableLayout::kClassesOffset)
    {
    }

    static uint32_t entry(const unsigned char* row, Unit trail)
    {
        return trail < 0x80 ? TableLayout::kMbcsNone : load32(row + 4 * (trail - size_t{0x80}));
    }

    Decoded read(const Unit* in, const Unit* end) const
    {
        // The lengths are constants of their branches, so that the next character need not wait for a look-up.
        switch (classes[*in]) {
        case 2:
            return sequence<2>(in, end);
        case 1:
            return {entry(bytes + rowOffsets[0], *in), 1};
        case 3:
            return sequence<3>(in, end);
        case 4:
            return sequence<4>(in, end);
        default:
            return {kUnmapped, 1};
        }
    }

    template <uint32_t kLength>
    Decoded sequence(const Unit* in, const Unit* end) const
    {
        if (static_cast<size_t>(end - in) < kLength)
            return kIncompleteInput;
        uint32_t value = entry(bytes + rowOffsets[*in], in[1]);
        for (uint32_t i = 2; i < kLength && value != TableLayout::kMbcsNone; ++i)
            value = entry(area + size_t{value} * TableLayout::kMbcsRowSize, in[i]);
        return {value, kLength};
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
