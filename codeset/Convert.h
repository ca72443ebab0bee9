#pragma once

#include <algorithm>
#include <bit>
#include <cstring>

#include "codeset/CodeSet.h"

// The one loop behind all converters.
//
// A reader takes one character of the input, a writer puts one into the output:
//   static constexpr bool kAscii     units below 0x80 are the ASCII characters (and are not seen by read)
//   static constexpr size_t kLongest units of the longest character; of a writer, all that one character may need
//   static constexpr bool kSteady    every character is one unit, found without a branch; a writer's replacement aside
//   Decoded read(in, end)            in < end; length 0 when the input ends within a character
//   Unit* write(c, out, end)         out < end; null, nothing written, when the character does not fit
//   int finish(out, end)             ends the text, returns a kst_result; of writers alone
//   asciiCodes()                     of writers of bytes without kAscii: the codes of ASCII, 0 where it is not one
//   byte;
//                                    null when other bytes must come first
// What they keep of the handle while they work they give back when they are destroyed.

constexpr uint32_t kUnmapped = 0xFFFFFFFF;    // no such character: to be replaced
constexpr uint32_t kNoCharacter = 0xFFFFFFFE; // consumed without output, as shift bytes are

struct Decoded {
    uint32_t codePoint;
    uint32_t length; // in units of the input
};

constexpr Decoded kIncompleteInput = {kUnmapped, 0};

constexpr size_t kBlock = 8; // units that are looked at together

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

/// Copies eight ASCII units. Through locals, since the compiler cannot know that the output is not the input.
template <class In, class Out>
void copyBlock(const In*& in, Out*& out)
{
    In units[kBlock];
    Out copies[kBlock];
    memcpy(units, in, sizeof units);
#pragma GCC unroll 1 // unrolled, the loop would not be vectorized
    for (size_t i = 0; i < kBlock; ++i)
        copies[i] = static_cast<Out>(units[i]);
    memcpy(out, copies, sizeof copies);
    in += kBlock;
    out += kBlock;
}

/// Copies the ASCII units at the beginning of the input, as many as fit. Bytes go by eights where there is room: the
/// output behind the last one copied may be overwritten.
template <class In, class Out>
void copyAscii(const In*& in, const In* inEnd, Out*& out, Out* outEnd)
{
    const size_t room = static_cast<size_t>(outEnd - out);
    size_t left = static_cast<size_t>(inEnd - in);
    left = left < room ? left : room;
    for (; left >= kBlock; left -= kBlock) {
        const uint64_t nonAscii = nonAsciiBits(in);
        if constexpr (sizeof(In) == 1 && sizeof(Out) == 1) {
            memcpy(out, in, kBlock);
            const unsigned count = leadingAscii(nonAscii);
            in += count;
            out += count;
            if (count < kBlock)
                return;
        } else {
            if (nonAscii != 0)
                break;
            copyBlock(in, out);
        }
    }
    for (; left > 0 && *in < 0x80; --left)
        *out++ = static_cast<Out>(*in++);
}

/// Writes the codes of the ASCII characters at the beginning of eight units. Returns how many, of wide units all or
/// none; none when a unit among the eight would have the code 0, which stands for a code that is not one byte. All
/// eight may be overwritten.
template <class In>
unsigned translateAscii(const unsigned char* codes, const In* in, unsigned char* out)
{
    constexpr uint64_t kLowest = 0x0101010101010101;
    unsigned char translated[kBlock];
#pragma GCC unroll 8
    for (size_t i = 0; i < kBlock; ++i)
        translated[i] = codes[in[i] & 0x7F];
    uint64_t word;
    memcpy(&word, translated, sizeof word);
    if (((word - kLowest) & ~word & kLowest << 7) != 0)
        return 0;
    memcpy(out, translated, sizeof translated);
    return sizeof(In) == 1 ? leadingAscii(nonAsciiBits(in)) : kBlock;
}

/// Converts one character. KST_DONE, or why it stays where it is.
template <class Reader, class Writer>
int convertOne(Reader& reader, Writer& writer, const typename Reader::Unit*& in, const typename Reader::Unit* inEnd,
               typename Writer::Unit*& out, typename Writer::Unit* outEnd)
{
    const Decoded character = reader.read(in, inEnd);
    if (character.length == 0)
        return KST_INCOMPLETE;
    if (character.codePoint != kNoCharacter) {
        typename Writer::Unit* const next = writer.write(character.codePoint, out, outEnd);
        if (next == nullptr)
            return KST_OUTPUT_FULL;
        out = next;
    }
    in += character.length;
    return KST_DONE;
}

/// Converts as long as neither the input nor the output can end within the next characters.
template <class Reader, class Writer>
void convertAmple(Reader& reader, Writer& writer, const typename Reader::Unit*& in, const typename Reader::Unit* inEnd,
                  typename Writer::Unit*& out, typename Writer::Unit* outEnd)
{
    constexpr bool kAscii = Reader::kAscii && Writer::kAscii;
    constexpr bool kTranslates = Reader::kAscii && !Writer::kAscii;
    // One to one, blocks are quicker than guessing for each character whether it is ASCII.
    constexpr bool kSteady = Reader::kSteady && Writer::kSteady;
    constexpr size_t kBatch = kSteady || !Reader::kAscii ? kBlock : 1;
    constexpr size_t kAmpleIn = std::max(kBatch * Reader::kLongest, kTranslates ? kBlock : 1);
    constexpr size_t kAmpleOut = std::max(kBatch * Writer::kLongest, kTranslates ? kBlock : 1);
    while (static_cast<size_t>(inEnd - in) >= kAmpleIn && static_cast<size_t>(outEnd - out) >= kAmpleOut) {
        if constexpr (kAscii && kSteady) {
            if (nonAsciiBits(in) == 0) {
                copyBlock(in, out);
                continue;
            }
        } else if constexpr (kAscii) {
            if (*in < 0x80) {
                copyAscii(in, inEnd, out, outEnd);
                continue;
            }
        } else if constexpr (kTranslates) {
            const bool ascii = sizeof *in == 1 ? *in < 0x80 : nonAsciiBits(in) == 0;
            const unsigned char* const codes = ascii ? writer.asciiCodes() : nullptr;
            const unsigned count = codes == nullptr ? 0 : translateAscii(codes, in, out);
            if (count > 0) {
                in += count;
                out += count;
                continue;
            }
        }
#pragma GCC unroll 8
        for (size_t i = 0; i < kBatch; ++i)
            convertOne(reader, writer, in, in + Reader::kLongest, out, out + Writer::kLongest);
    }
}

/// The converter of a pair. Everything but the rare is inlined, so that no bounds are checked where convertAmple has
/// found that the longest character fits.
template <class Reader, class Writer>
[[gnu::flatten]] int convert(kst_code_set& codeSet, const typename Reader::Unit*& in,
                             const typename Reader::Unit* inEnd, typename Writer::Unit*& out,
                             typename Writer::Unit* outEnd)
{
    if (in == nullptr) {
        const int result = Writer(codeSet).finish(out, outEnd);
        if (result == KST_DONE)
            codeSet.shiftState = 0;
        return result;
    }
    Reader reader(codeSet);
    Writer writer(codeSet);
    const typename Reader::Unit* from = in; // locals: the output could alias the callers' pointers
    typename Writer::Unit* to = out;
    convertAmple(reader, writer, from, inEnd, to, outEnd);
    int result = KST_DONE;
    while (from < inEnd && result == KST_DONE) {
        if (to == outEnd)
            result = KST_OUTPUT_FULL;
        else if (Reader::kAscii && Writer::kAscii && *from < 0x80)
            copyAscii(from, inEnd, to, outEnd);
        else
            result = convertOne(reader, writer, from, inEnd, to, outEnd);
    }
    in = from;
    out = to;
    return result;
}
