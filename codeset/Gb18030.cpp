// Family 10: ASCII, and characters of two or four bytes. Both kinds are numbered in one sequence.

#include "codeset/Gb18030Numbers.h"
#include "codeset/TableText.h"

namespace
{

struct Gb18030Reader {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    static constexpr size_t kLongest = 4;
    static constexpr bool kSteady = false;
    const uint16_t* const values;
    explicit Gb18030Reader(const kst_code_set& set) : values(set.table->linear.data()) {}

    uint32_t codePointOf(uint32_t index) const
    {
        if (index < TableLayout::kGbIndexEnd)
            return values[index] == TableLayout::kNoValue ? kUnmapped : values[index];
        if (index >= Gb18030::kFirstSupplementary && index <= Gb18030::kLastSupplementary)
            return 0x10000 + (index - Gb18030::kFirstSupplementary);
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
            return {codePointOf(Gb18030::numberOf(lead, in[1])), 2};
        if (end - in < 4)
            return kIncompleteInput;
        return {codePointOf(Gb18030::numberOf(lead, in[1], in[2], in[3])), 4};
    }
};

struct Gb18030LookUp {
    const ReverseLookUp<uint32_t> reverse;
    explicit Gb18030LookUp(const kst_code_set& set) : reverse(set) {}

    uint32_t find(uint32_t c) const
    {
        if (c < 0x10000 || c > 0x10FFFF)
            return reverse.find(c);
        return Gb18030::bytesBehind(Gb18030::kSupplementaryLead, c - 0x10000);
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
