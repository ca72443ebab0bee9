// Family 4: EBCDIC text of single bytes, with runs of two-byte characters between shift out and shift in.

#include "codeset/EbcdicTables.h"
#include "codeset/TableText.h"

namespace
{

constexpr unsigned char kShiftOut = 0x0E;
constexpr unsigned char kShiftIn = 0x0F;

struct EbcdicDbcsReader {
    using Unit = unsigned char;
    static constexpr bool kAscii = false;
    kst_code_set& codeSet;
    const CodeTable& table;
    explicit EbcdicDbcsReader(kst_code_set& set) : codeSet(set), table(*set.table) {}

    uint32_t value(Unit lead, Unit byte) const
    {
        return tableValue(table.at(table.rowOffsets[lead] + 2 * size_t{byte}));
    }

    Decoded read(const Unit* in, const Unit* end) const
    {
        const Unit byte = *in;
        if (byte == kShiftOut || byte == kShiftIn) {
            codeSet.shiftState = byte == kShiftOut;
            return {kNoCharacter, 1};
        }
        if (codeSet.shiftState == 0)
            return {invar_eb_to_ucs[byte] != 0 ? def_eb_to_ucs[byte] : value(0, byte), 1};
        if (byte < 0x40 || byte > 0xFE)
            return {def_eb_to_ucs[byte], 1};
        if (end - in < 2)
            return kIncompleteInput;
        return {value(byte, in[1]), 2};
    }
};

struct EbcdicDbcsWriter {
    using Unit = unsigned char;
    static constexpr bool kAscii = false;
    kst_code_set& codeSet;
    const ReverseMap reverse;
    explicit EbcdicDbcsWriter(kst_code_set& set) : codeSet(set), reverse(set.table->reverse) {}

    // A code of one byte stands in state 0, one of two in state 1. Text in state 1 always leaves room for the shift in
    // that must follow some time.
    Unit* writeCode(const CodeBytes& code, Unit* out, const Unit* end) const
    {
        const unsigned char state = code.length > 1;
        const bool shifts = codeSet.shiftState != state;
        if (end - out < code.length + shifts + state)
            return nullptr;
        if (shifts)
            *out++ = state != 0 ? kShiftOut : kShiftIn;
        codeSet.shiftState = state;
        memcpy(out, code.bytes, code.length);
        return out + code.length;
    }

    Unit* write(uint32_t c, Unit* out, const Unit* end) const
    {
        const uint32_t code = reverse.find<uint16_t>(c);
        if (code >= 0x100)
            return writeCode({2, {static_cast<Unit>(code >> 8), static_cast<Unit>(code)}}, out, end);
        if (code != 0 || c == 0)
            return writeCode({1, {static_cast<Unit>(code)}}, out, end);
        const bool inDouble = codeSet.shiftState != 0 && codeSet.doubleSubstitution.length == 2;
        Unit* const next = writeCode(inDouble ? codeSet.doubleSubstitution : codeSet.substitution, out, end);
        codeSet.substitutions += next != nullptr;
        return next;
    }

    int finish(Unit*& out, const Unit* end) const
    {
        if (codeSet.shiftState == 0)
            return KST_DONE;
        if (out == end)
            return KST_OUTPUT_FULL;
        *out++ = kShiftIn;
        return KST_DONE;
    }
};

constexpr auto ebcdic_dbcs_to_utf8_r = convert<EbcdicDbcsReader, Utf8Writer>;
constexpr auto ebcdic_dbcs_from_utf8_r = convert<Utf8Reader, EbcdicDbcsWriter>;
constexpr auto ebcdic_dbcs_to_ucs2_r = convert<EbcdicDbcsReader, Ucs2Writer>;
constexpr auto ebcdic_dbcs_from_ucs2_r = convert<Ucs2Reader, EbcdicDbcsWriter>;

} // namespace

const ConverterFamily kEbcdicDbcs = {ebcdic_dbcs_to_utf8_r, ebcdic_dbcs_from_utf8_r, ebcdic_dbcs_to_ucs2_r,
                                     ebcdic_dbcs_from_ucs2_r};
