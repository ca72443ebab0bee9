#pragma once

#include "codeset/TableText.h"

// Single-byte code sets: the 256 values in the table's header. Those based on ASCII look up the upper half only.

template <bool kAsciiBased>
struct SbcsReader {
    using Unit = unsigned char;
    static constexpr bool kAscii = kAsciiBased;
    const unsigned char* const values;
    explicit SbcsReader(const kst_code_set& set) : values(set.table->at(TableLayout::kRowsOffset)) {}
    Decoded read(const Unit* in, const Unit*) const { return {tableValue(values + 2 * size_t{*in}), 1}; }
};

template <bool kAsciiBased>
using SbcsWriter = TableWriter<ReverseLookUp<uint16_t>, 1, kAsciiBased>;
