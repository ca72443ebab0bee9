// Family 2: ASCII, and characters of one or two bytes from 0x80 on.

#include "codeset/TableText.h"

struct AsciiDbcsReader {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    static constexpr size_t kLongest = 2;
    static constexpr bool kSteady = false;
    const unsigned char* const bytes;
    const uint32_t* const rowOffsets;
    const unsigned char* const classes;
    explicit AsciiDbcsReader(const kst_code_set& set)
        : bytes(set.table->bytes.data()), rowOffsets(set.table->rowOffsets.data()),
          classes(bytes + TableLayout::kClassesOffset)
    {
    }

    Decoded read(const Unit* in, const Unit* end) const
    {
        const unsigned char length = classes[*in];
        if (length == TableLayout::kClassLead2) {
            if (end - in < 2)
                return kIncompleteInput;
            return {tableValue(bytes + rowOffsets[*in] + 2 * size_t{in[1]}), 2};
        }
        if (length == TableLayout::kClassSingle)
            return {tableValue(bytes + rowOffsets[0] + 2 * size_t{*in}), 1};
        return {kUnmapped, 1};
    }
};

using AsciiDbcsWriter = TableWriter<ReverseLookUp<uint16_t>, 2>;

static constexpr auto ascii_dbcs_to_utf8_r = convert<AsciiDbcsReader, Utf8Writer>;
static constexpr auto ascii_dbcs_from_utf8_r = convert<Utf8Reader, AsciiDbcsWriter>;
static constexpr auto ascii_dbcs_to_ucs2_r = convert<AsciiDbcsReader, Ucs2Writer>;
static constexpr auto ascii_dbcs_from_ucs2_r = convert<Ucs2Reader, AsciiDbcsWriter>;

const ConverterFamily kAsciiDbcs = {ascii_dbcs_to_utf8_r, ascii_dbcs_from_utf8_r, ascii_dbcs_to_ucs2_r,
                                    ascii_dbcs_from_ucs2_r};
