#pragma once

#include "codeset/Convert.h"

// The Unicode ends of the conversions: readers and writers of UTF-8 and UCS-2.

constexpr bool isSurrogate(uint32_t codePoint)
{
    return (codePoint & 0xFFFFF800) == 0xD800;
}

/// Takes UTF-8. What is no UTF-8 is one unknown character up to the byte that breaks it.
struct Utf8Reader {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    static constexpr size_t kLongest = 4;
    static constexpr bool kSteady = false;
    explicit Utf8Reader(const kst_code_set&) {}

    static bool isTrail(unsigned char byte) { return (byte & 0xC0) == 0x80; }

    Decoded read(const Unit* in, const Unit* end) const
    {
        const uint32_t lead = *in;
        const size_t left = static_cast<size_t>(end - in);
        if (lead < 0x80)
            return {lead, 1};
        if (lead >= 0xC2 && lead < 0xE0 && left >= 2 && isTrail(in[1]))
            return {(lead & 0x1F) << 6 | (in[1] & 0x3Fu), 2};
        if (lead >= 0xE0 && lead < 0xF0 && left >= 3 && isTrail(in[1]) && isTrail(in[2])) {
            const uint32_t c = (lead & 0x0F) << 12 | (in[1] & 0x3Fu) << 6 | (in[2] & 0x3Fu);
            if (c >= 0x800 && !isSurrogate(c))
                return {c, 3};
        }
        if (lead >= 0xF0 && left >= 4 && isTrail(in[1]) && isTrail(in[2]) && isTrail(in[3])) {
            const uint32_t c = (lead & 0x0F) << 18 | (in[1] & 0x3Fu) << 12 | (in[2] & 0x3Fu) << 6 | (in[3] & 0x3Fu);
            if (c >= 0x10000 && c <= 0x10FFFF)
                return {c, 4};
        }
        return readChecked(in, left);
    }

    // What ends within a character, and what is broken: overlong forms, surrogates, beyond U+10FFFF.
    [[gnu::noinline]] static Decoded readChecked(const Unit* in, size_t left)
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
    static constexpr size_t kLongest = 1;
    static constexpr bool kSteady = true;
    explicit Ucs2Reader(const kst_code_set&) {}
    Decoded read(const Unit* in, const Unit*) const { return {isSurrogate(*in) ? kUnmapped : *in, 1}; }
};

/// Writes UTF-8, "?" for unknown characters. A surrogate, which only a broken table holds, is none.
struct Utf8Writer {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    static constexpr size_t kLongest = 4;
    static constexpr bool kSteady = false;
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
    static constexpr size_t kLongest = 1;
    static constexpr bool kSteady = true;
    kst_code_set& codeSet;
    explicit Ucs2Writer(kst_code_set& set) : codeSet(set) {}

    Unit* write(uint32_t c, Unit* out, const Unit*) const
    {
        if (c > 0xFFFF || isSurrogate(c)) {
            ++codeSet.substitutions;
            c = '?';
        }
        *out = static_cast<Unit>(c);
        return out + 1;
    }

    int finish(Unit*&, const Unit*) const { return KST_DONE; }
};
