#pragma once

#include <bit>
#include <cstring>

#include "codeset/CodeSet.h"

// The one loop behind all converters.
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
