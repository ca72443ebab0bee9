#pragma once

#include "codeset/UnicodeText.h"

// What the readers and writers of the table families share.

/// A 16-bit value of a table; 0xFFFF stands for none.
inline uint32_t tableValue(uint16_t value)
{
    return value == TableLayout::kNoValue ? kUnmapped : value;
}

inline uint32_t tableValue(const unsigned char* entry)
{
    return tableValue(load16(entry));
}

/// Writes the code set's substitution character and counts it, or returns null when it does not fit.
[[gnu::noinline]] inline unsigned char* writeSubstitution(kst_code_set& codeSet, const CodeBytes& code,
                                                          unsigned char* out, const unsigned char* end)
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
    static constexpr size_t kLongest = TableLayout::kMaxCodeLength; // of a substitution
    static constexpr bool kSteady = kMaxBytes == 1;
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
    const unsigned char* asciiCodes() const { return codeSet.table->asciiCodes.data(); }
};

/// The reverse arrays of a table as they are.
template <class Code>
struct ReverseLookUp {
    const ReverseMap& reverse;
    const unsigned char* const bytes; // a copy: the output could alias the table's
    explicit ReverseLookUp(const kst_code_set& set) : reverse(set.table->reverse), bytes(set.table->bytes.data()) {}
    uint32_t find(uint32_t c) const { return reverse.find<Code>(bytes, c); }
};
