// Family 10: ASCII, and characters of two or four bytes. Both kinds are numbered in one sequence.

#include "codeset/TableText.h"

namespace
{

// Four-byte characters above U+FFFF follow the code points.
constexpr uint32_t kFirstSupplementary = 213067;
constexpr uint32_t kLastSupplementary = 1261642;
constexpr uint32_t kSupplementaryShift = 147531; // index - code point

struct Gb18030Reader {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    const uint16_t* const values;
    explicit Gb18030Reader(const kst_code_set& set) : values(set.table->linear.data()) {}

    uint32_t codePointOf(uint32_t index) const
    {
        if (index < TableLayout::kGbIndexEnd)
            return values[index] == TableLayout::kNoValue ? kUnmapped : values[index];
        if (index >= kFirstSupplementary && index <= kLastSupplementary)
            return index - kSupplementaryShift;
        return kUnmapped;
    }

    // The bytes behind the first are not checked: what they should not be shares the number of another character.
    Decoded read(const Unit* in, const Unit* end) const
    {
        const uint32_t lead = in[0];
        if (lead == 0x80 || lead == 0xFF)
            return {kUnmapped, 1};
        if (end - in < 2)
            return kIncompleteInput;
        if (in[1] < 0x30 || in[1] > 0x3F)
            return {codePointOf((lead - 0x81) * 191 + in[1] - 63), 2}; // a number below 0 wraps: unmapped
        if (end - in < 4)
            return kIncompleteInput;
        return {codePointOf((((lead & 0x7F) * 10 + in[1]) * 126 + in[2]) * 10 + in[3] - 50351), 4};
    }
};

struct Gb18030LookUp {
    const ReverseMap reverse;
    explicit Gb18030LookUp(const kst_code_set& set) : reverse(set.table->reverse) {}

    uint32_t find(uint32_t c) const
    {
        if (c < 0x10000 || c > 0x10FFFF)
            return reverse.find<uint32_t>(c);
        const uint32_t n = c - 0x10000;
        return (0x90 + n / 12600) << 24 | (0x30 + n / 1260 % 10) << 16 | (0x81 + n / 10 % 126) << 8 | (0x30 + n % 10);
    }
};

using Gb18030Writer = TableWriter<Gb18030LookUp, 4>;

constexpr auto ascii_gb18030_to_utf8_r = convert<Gb18030Reader, Utf8Writer>;
constexpr auto ascii_gb18030_from_utf8_r = convert<Utf8Reader, Gb18030Writer>;
constexpr auto ascii_gb18030_to_ucs2_r = convert<Gb18030Reader, Ucs2Writer>;
constexpr auto ascii_gb18030_from_ucs2_r = convert<Ucs2Reader, Gb18030Writer>;

} // namespace

const ConverterFamily kGb18030 = {ascii_gb18030_to_utf8_r, ascii_gb18030_from_utf8_r, ascii_gb18030_to_ucs2_r,
                                  ascii_gb18030_from_ucs2_r};
