// Family 4: EBCDIC text of single bytes, with runs of two-byte characters between shift out and shift in.

#include "codeset/EbcdicTables.h"
#include "codeset/TableText.h"

namespace
{

constexpr unsigned char kShiftOut = 0x0E;
constexpr unsigned char kShiftIn = 0x0F;

/// The handle's shift state. Kept in a copy meanwhile, since the output could alias the handle.
struct ShiftState {
    kst_code_set& codeSet;
    unsigned char isDouble;
    explicit ShiftState(kst_code_set& set) : codeSet(set), isDouble(set.shiftState) {}
    ShiftState(const ShiftState&) = delete;
    ShiftState& operator=(const ShiftState&) = delete;
    ~ShiftState() { codeSet.shiftState = isDouble; }
};

struct EbcdicDbcsReader {
    using Unit = unsigned char;
    static constexpr bool kAscii = false;
    static constexpr size_t kLongest = 2;
    static constexpr bool kSteady = false;
    ShiftState state;
    const unsigned char* const bytes;
    const uint32_t* const rowOffsets;
    const uint16_t* const singles;
    explicit EbcdicDbcsReader(kst_code_set& set)
        : state(set), bytes(set.table->bytes.data()), rowOffsets(set.table->rowOffsets.data()),
          singles(set.table->linear.data())
    {
    }

    Decoded read(const Unit* in, const Unit* end)
    {
        const Unit byte = *in;
        if (byte == kShiftOut || byte == kShiftIn) {
            state.isDouble = byte == kShiftOut;
            return {kNoCharacter, 1};
        }
        if (state.isDouble == 0)
            return {tableValue(singles[byte]), 1};
        if (byte < 0x40 || byte > 0xFE)
            return {def_eb_to_ucs[byte], 1};
        if (end - in < 2)
            return kIncompleteInput;
        return {tableValue(bytes + rowOffsets[byte] + 2 * size_t{in[1]}), 2};
    }
};

struct EbcdicDbcsWriter {
    using Unit = unsigned char;
    static constexpr bool kAscii = false;
    static constexpr size_t kLongest = TableLayout::kMaxCodeLength + 2; // shift out, code, room for shift in
    static constexpr bool kSteady = false;
    ShiftState state;
    const ReverseLookUp<uint16_t> reverse;
    const unsigned char* const singles;
    explicit EbcdicDbcsWriter(kst_code_set& set) : state(set), reverse(set), singles(set.table->asciiCodes.data()) {}

    const unsigned char* asciiCodes() const { return state.isDouble == 0 ? singles : nullptr; }

    // A code of one byte stands in state 0, one of two in state 1. Text in state 1 always leaves room for the shift in
    // that must follow some time.
    Unit* shift(unsigned length, Unit* out, const Unit* end)
    {
        const unsigned char isDouble = length > 1;
        const bool shifts = state.isDouble != isDouble;
        if (static_cast<size_t>(end - out) < length + shifts + isDouble)
            return nullptr;
        if (shifts)
            *out++ = isDouble != 0 ? kShiftOut : kShiftIn;
        state.isDouble = isDouble;
        return out;
    }

    Unit* write(uint32_t c, Unit* out, const Unit* end)
    {
        const uint32_t code = reverse.find(c);
        if (code - 1 < 0xFF && state.isDouble == 0) { // most text; there is room for one byte
            *out = static_cast<Unit>(code);
            return out + 1;
        }
        if (code == 0 && c != 0)
            return substitute(out, end);
        const unsigned length = code < 0x100 ? 1 : 2;
        out = shift(length, out, end);
        if (out == nullptr)
            return nullptr;
        if (length == 2)
            *out++ = static_cast<Unit>(code >> 8);
        *out++ = static_cast<Unit>(code);
        return out;
    }

    [[gnu::noinline]] Unit* substitute(Unit* out, const Unit* end)
    {
        kst_code_set& codeSet = state.codeSet;
        const bool inDouble = state.isDouble != 0 && codeSet.doubleSubstitution.length == 2;
        const CodeBytes& code = inDouble ? codeSet.doubleSubstitution : codeSet.substitution;
        out = shift(code.length, out, end);
        return out == nullptr ? nullptr : writeSubstitution(codeSet, code, out, end);
    }

    int finish(Unit*& out, const Unit* end) const
    {
        if (state.isDouble == 0)
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
