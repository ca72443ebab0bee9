#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "codeset/TableLayout.h"

/// The way from Unicode to the codes of a table: codes by the high part of the code point, then by its low byte.
struct ReverseMap {
    const unsigned char* index = nullptr;
    uint32_t indexCount = 0; // 0: the table converts towards Unicode only
    const unsigned char* rows = nullptr;

    /// The code at a place of a row.
    template <class Code>
    static uint32_t code(const unsigned char* row, uint32_t place)
    {
        return sizeof(Code) == 2 ? load16(row + 2 * size_t{place}) : load32(row + 4 * size_t{place});
    }

    /// The code as a big-endian number of one to sizeof(Code) bytes; 0 when the code point has none. (The code of
    /// U+0000 is 0 in every code set, so that nobody needs to look for it.)
    template <class Code>
    uint32_t find(uint32_t codePoint) const
    {
        const uint32_t high = codePoint >> 8;
        if (high >= indexCount)
            return 0;
        const uint16_t row = load16(index + 2 * size_t{high});
        if (row == TableLayout::kNoValue)
            return 0;
        return code<Code>(rows + row * TableLayout::kReverseRowCodes * sizeof(Code), codePoint & 0xFF);
    }

    /// The row of U+0000 to U+00FF, an empty one when there is none.
    template <class Code>
    const unsigned char* firstRow() const
    {
        static constexpr unsigned char kEmptyRow[TableLayout::kReverseRowCodes * sizeof(Code)] = {};
        const uint16_t row = indexCount == 0 ? TableLayout::kNoValue : load16(index);
        return row == TableLayout::kNoValue ? kEmptyRow : rows + row * sizeof kEmptyRow;
    }
};

/// A table file in memory, all its offsets and row numbers checked, so that the converters need no bounds.
struct CodeTable {
    // The file, then a row of 0xFF bytes: a row that the file does not have, wholly or in part, reads as unmapped.
    std::vector<unsigned char> bytes;
    uint32_t size = 0;
    Family family = Family::AsciiSbcs;
    std::array<uint32_t, 256> rowOffsets{}; // families with rows: where in bytes the row of each lead byte begins
    std::vector<uint16_t> linear;           // GB18030: the value of every index, 65536 of them
    ReverseMap reverse;

    const unsigned char* at(size_t offset) const { return bytes.data() + offset; }
};

/// True when the file contents are those of a table, sound or not.
bool isTable(const std::vector<unsigned char>& file);

/// Takes the contents of a table file. Null when an offset or number in it leads out of the file.
std::shared_ptr<const CodeTable> parseTable(std::vector<unsigned char> file);
