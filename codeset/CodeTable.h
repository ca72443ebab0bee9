#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "codeset/TableLayout.h"

/// The way from Unicode to the codes of a table: codes by the high part of the code point, then by its low byte.
struct ReverseMap {
    uint32_t index = 0;      // offsets are those of the table's bytes
    uint32_t indexCount = 0; // 0: the table converts towards Unicode only
    uint32_t rows = 0;
    uint32_t emptyRow = 0;
    std::array<uint32_t, 256> rowOffsets{}; // the rows of U+0000 to U+FFFF

    /// The code as a big-endian number of one to sizeof(Code) bytes; 0 when the code point has none. (The code of
    /// U+0000 is 0 in every code set, so that nobody needs to look for it.) Takes the table's bytes.
    template <class Code>
    uint32_t find(const unsigned char* bytes, uint32_t codePoint) const
    {
        const uint32_t high = codePoint >> 8;
        const uint32_t row = high < rowOffsets.size() ? rowOffsets[high] : rowOffset<Code>(bytes, high);
        const unsigned char* const code = bytes + row + sizeof(Code) * (codePoint & 0xFF);
        return sizeof(Code) == 2 ? load16(code) : load32(code);
    }

    /// Where the row with that high part begins, an empty one when there is none.
    template <class Code>
    uint32_t rowOffset(const unsigned char* bytes, uint32_t high) const
    {
        const uint16_t row = high < indexCount ? load16(bytes + index + 2 * size_t{high}) : TableLayout::kNoValue;
        if (row == TableLayout::kNoValue)
            return emptyRow;
        return rows + static_cast<uint32_t>(row * TableLayout::kReverseRowCodes * sizeof(Code));
    }
};

/// A table file in memory, all its offsets and row numbers checked, so that the converters need no bounds.
struct CodeTable {
    // The file, then a row of 0xFF bytes: a row that the file does not have, wholly or in part, reads as unmapped. Then
    // a reverse row of zeros, which has no codes, and what replaces a row of the file.
    std::vector<unsigned char> bytes;
    uint32_t size = 0;
    Family family = Family::AsciiSbcs;
    std::array<uint32_t, 256> rowOffsets{}; // families with rows: where in bytes the row of each lead byte begins
    std::vector<uint16_t> linear;           // GB18030: the value of every index, 65536 of them
                                            // families of single bytes, and family 4: of every single byte
    ReverseMap reverse;
    std::array<unsigned char, 128> asciiCodes{}; // EBCDIC: 0 where the code is not one byte

    const unsigned char* at(size_t offset) const { return bytes.data() + offset; }
};

/// True when the file contents are those of a table, sound or not.
bool isTable(const std::vector<unsigned char>& file);

/// Takes the contents of a table file. Null when an offset or number in it leads out of the file.
std::shared_ptr<const CodeTable> parseTable(std::vector<unsigned char> file);
