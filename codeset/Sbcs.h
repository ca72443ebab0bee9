#pragma once

#include "codeset/TableText.h"

// Single-byte code sets. Those based on ASCII have it as it is, whatever the table says.

template <bool kAsciiBased>
struct SbcsReader {
    using Unit = unsigned char;
    static constexpr bool kAscii = kAsciiBased;
    static constexpr size_t kLongest = 1;
    static constexpr bool kSteady = true;
    const uint16_t* const values;
    explicit SbcsReader(const kst_code_set& set) : values(set.table->linear.data()) {}
    Decoded read(const Unit* in, const Unit*) const { return {tableValue(values[*in]), 1}; }
};

template <bool kAsciiBased>
using SbcsWriter = TableWriter<ReverseLookUp<uint16_t>, 1, kAsciiBased>;
