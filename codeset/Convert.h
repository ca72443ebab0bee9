#pragma once

#include <bit>
#include <cstring>

#include "codeset/CodeSet.h"

// The one loop behind all converters, and the Unicode ends of it.
//
// A reader takes one character of the input, a writer puts one into the output:
//   static constexpr bool kAscii   units below 0x80 are the ASCII characters (and are not seen by read)
//   Decoded read(in, end)          in < end; length 0 when the input ends within a character
//   Unit* write(c, out, end)       out < end; null, nothing written, when the character does not fit
//   int finish(out, end)           ends the text, returns a kst_result

constexpr uint32_t kUnmapped = 0xFFFFFFFF;    // no such character: to be replaced
constexpr uint32_t kNoCharacter = 0xFFFFFFFE; // consumed without output, as shift bytes are

struct Decoded {
    uint32_t codePoint;
    uint32_t length; // in units of the input
};

constexpr Decoded kIncompleteInput = {kUnmapped, 0};

/// A 16-bit value of a table; 0xFFFF stands for none.
inline uint32_t tableValue(const unsigned char* entry)
{
    const uint16_t value = load16(entry);
    return value == TableLayout::kNoValue ? kUnmapped : value;
}

constexpr bool isSurrogate(uint32_t codePoint)
{
    return (codePoint & 0xFFFFF800) == 0xD800;
}

/// Bits that are set where eight units are not ASCII: of bytes the highest ones, in their order.
template <class Unit>
uint64_t nonAsciiBits(const Unit* units)
{
    constexpr uint64_t kMask = sizeof(Unit) == 1 ? 0x8080808080808080 : 0xFF80FF80FF80FF80;
    uint64_t words[sizeof(Unit)];
    memcpy(words, units, sizeof words);
    uint64_t all = 0;
    for (const uint64_t word : words)
        all |= word;
    return all & kMask;
}

/// How many of eight bytes are ASCII before the first that is not.
inline unsigned leadingAscii(uint64_t nonAscii)
{
    if constexpr (std::endian::native == std::endian::little)
        return static_cast<unsigned>(std::countr_zero(nonAscii)) / 8;
    return static_cast<unsigned>(std::countl_zero(nonAscii)) / 8;
}

/// Copies the ASCII units at the beginning of the input, as many as fit. Bytes go by eights where there is room: the
/// output behind the last one copied may be overwritten.
template <class In, class Out>
void copyAscii(const In*& in, const In* inEnd, Out*& out, Out* outEnd)
{
    const size_t room = static_cast<size_t>(outEnd - out);
    size_t left = static_cast<size_t>(inEnd - in);
    left = left < room ? left : room;
    for (; left >= 8; left -= 8) {
        const uint64_t nonAscii = nonAsciiBits(in);
        if constexpr (sizeof(In) == 1 && sizeof(Out) == 1) {
            memcpy(out, in, 8);
            const unsigned count = leadingAscii(nonAscii);
            in += count;
            out += count;
            if (count < 8)
                return;
        } else {
            if (nonAscii != 0)
                break;
            for (int i = 0; i < 8; ++i)
                out[i] = static_cast<Out>(in[i]);
            in += 8;
            out += 8;
        }
    }
    for (; left > 0 && *in < 0x80; --left)
        *out++ = static_cast<Out>(*in++);
}

template <class Reader, class Writer>
int convert(kst_code_set& codeSet, const typename Reader::Unit*& in, const typename Reader::Unit* inEnd,
            typename Writer::Unit*& out, typename Writer::Unit* outEnd)
{
    Reader reader(codeSet);
    Writer writer(codeSet);
    if (in == nullptr) {
        const int result = writer.finish(out, outEnd);
        if (result == KST_DONE)
            codeSet.shiftState = 0;
        return result;
    }
    const typename Reader::Unit* from = in; // locals: the output could alias the callers' pointers
    typename Writer::Unit* to = out;
    int result = KST_DONE;
    while (from < inEnd) {
        if (to == outEnd) {
            result = KST_OUTPUT_FULL;
            break;
        }
        if constexpr (Reader::kAscii && Writer::kAscii) {
            if (*from < 0x80) {
                copyAscii(from, inEnd, to, outEnd);
                continue;
            }
        }
        const Decoded character = reader.read(from, inEnd);
        if (character.length == 0) {
            result = KST_INCOMPLETE;
            break;
        }
        if (character.codePoint != kNoCharacter) {
            typename Writer::Unit* const next = writer.write(character.codePoint, to, outEnd);
            if (next == nullptr) {
                result = KST_OUTPUT_FULL;
                break;
            }
            to = next;
        }
        from += character.length;
    }
    in = from;
    out = to;
    return result;
}

/// Takes UTF-8. What is no UTF-8 is one unknown character up to the byte that breaks it.
struct Utf8Reader {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    explicit Utf8Reader(const kst_code_set&) {}

    static bool isTrail(unsigned char byte) { return (byte & 0xC0) == 0x80; }

    Decoded read(const Unit* in, const Unit* end) const
    {
        const uint32_t lead = *in;
        const size_t left = static_cast<size_t>(end - in);
        if (lead < 0x80)
            return {lead, 1};
        if (lead >= 0xE1 && lead < 0xED && left >= 3 && isTrail(in[1]) && isTrail(in[2]))
            return {(lead & 0x0F) << 12 | (in[1] & 0x3Fu) << 6 | (in[2] & 0x3Fu), 3};
        if (lead >= 0xC2 && lead < 0xE0 && left >= 2 && isTrail(in[1]))
            return {(lead & 0x1F) << 6 | (in[1] & 0x3Fu), 2};
        return readChecked(in, left);
    }

    // The leads with narrower second bytes (overlong forms, surrogates, beyond U+10FFFF), and all that is broken.
    static Decoded readChecked(const Unit* in, size_t left)
    {
        const uint32_t lead = *in;
        if (lead < 0xC2 || lead > 0xF4)
            return {kUnmapped, 1};
        const uint32_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        uint32_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        uint32_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
        uint32_t codePoint = lead & (0x7Fu >> length);
        for (uint32_t i = 1; i < length; ++i) {
            if (i == left)
                return kIncompleteInput;
            if (in[i] < lowest || in[i] > highest)
                return {kUnmapped, i};
            codePoint = codePoint << 6 | (in[i] & 0x3Fu);
            lowest = 0x80;
            highest = 0xBF;
        }
        return {codePoint, length};
    }
};

/// Takes UCS-2, in which surrogates are no characters.
struct Ucs2Reader {
    using Unit = kst_wchar;
    static constexpr bool kAscii = true;
    explicit Ucs2Reader(const kst_code_set&) {}
    Decoded read(const Unit* in, const Unit*) const { return {isSurrogate(*in) ? kUnmapped : *in, 1}; }
};

/// Writes UTF-8, "?" for unknown characters. A surrogate, which only a broken table holds, is none.
struct Utf8Writer {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    kst_code_set& codeSet;
    explicit Utf8Writer(kst_code_set& set) : codeSet(set) {}

    static Unit trail(uint32_t bits) { return static_cast<Unit>(0x80 | (bits & 0x3F)); }

    Unit* write(uint32_t c, Unit* out, const Unit* end) const
    {
        const size_t room = static_cast<size_t>(end - out);
        if (c < 0x80) {
            *out = static_cast<Unit>(c);
            return out + 1;
        }
        if (c < 0x800) {
            if (room < 2)
                return nullptr;
            out[0] = static_cast<Unit>(0xC0 | c >> 6);
            out[1] = trail(c);
            return out + 2;
        }
        if (c > 0x10FFFF || isSurrogate(c)) {
            ++codeSet.substitutions;
            *out = '?';
            return out + 1;
        }
        if (c < 0x10000) {
            if (room < 3)
                return nullptr;
            out[0] = static_cast<Unit>(0xE0 | c >> 12);
            out[1] = trail(c >> 6);
            out[2] = trail(c);
            return out + 3;
        }
        if (room < 4)
            return nullptr;
        out[0] = static_cast<Unit>(0xF0 | c >> 18);
        out[1] = trail(c >> 12);
        out[2] = trail(c >> 6);
        out[3] = trail(c);
        return out + 4;
    }

    int finish(Unit*&, const Unit*) const { return KST_DONE; }
};

/// Writes UCS-2, "?" for unknown characters and those above U+FFFF.
struct Ucs2Writer {
    using Unit = kst_wchar;
    static constexpr bool kAscii = true;
    kst_code_set& codeSet;
    explicit Ucs2Writer(kst_code_set& set) : codeSet(set) {}

    Unit* write(uint32_t c, Unit* out, const Unit*) const
    {
        const bool unknown = c > 0xFFFF || isSurrogate(c);
        codeSet.substitutions += unknown;
        *out = unknown ? u'?' : static_cast<Unit>(c);
        return out + 1;
    }

    int finish(Unit*&, const Unit*) const { return KST_DONE; }
};

/// Writes the code set's substitution character and counts it, or returns null when it does not fit.
inline unsigned char* writeSubstitution(kst_code_set& codeSet, const CodeBytes& code, unsigned char* out,
                                        const unsigned char* end)
{
    if (end - out < code.length)
        return nullptr;
    ++codeSet.substitutions;
    memcpy(out, code.bytes, code.length);
    return out + code.length;
}

/// Writes the code set that Map reaches from Unicode: Map(codeSet).find(c) is the code of c as a big-endian number of
/// one to kMaxBytes bytes, 0 for none. The code of U+0000 is the byte 0.
template <class Map, unsigned kMaxBytes, bool kAsciiBased = true>
struct TableWriter {
    using Unit = unsigned char;
    static constexpr bool kAscii = kAsciiBased;
    kst_code_set& codeSet;
    const Map map;
    explicit TableWriter(kst_code_set& set) : codeSet(set), map(set) {}

    Unit* write(uint32_t c, Unit* out, const Unit* end) const
    {
        const uint32_t code = map.find(c);
        if (code == 0 && c != 0)
            return writeSubstitution(codeSet, codeSet.substitution, out, end);
        const unsigned length = kMaxBytes == 1 ? 1 : code < 0x100 ? 1 : code < 0x10000 ? 2 : code < 0x1000000 ? 3 : 4;
        if (static_cast<size_t>(end - out) < length)
            return nullptr;
        for (unsigned i = length; i > 0; --i)
            *out++ = static_cast<Unit>(code >> (8 * (i - 1)));
        return out;
    }

    int finish(Unit*&, const Unit*) const { return KST_DONE; }
};

/// The reverse arrays of a table as they are, with one step less for the characters below U+0100.
template <class Code>
struct ReverseLookUp {
    const ReverseMap reverse;
    const unsigned char* const low;
    explicit ReverseLookUp(const kst_code_set& set) : reverse(set.table->reverse), low(reverse.firstRow<Code>()) {}
    uint32_t find(uint32_t c) const
    {
        if (c < TableLayout::kReverseRowCodes)
            return ReverseMap::code<Code>(low, c);
        return reverse.find<Code>(c);
    }
};
