#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace report
{
/// What rows of one report are paired by, as hashes: of the values that name a row, of all that is compared. Two rows
/// with one hash are taken for the same name; what differs in them is then told as changed, never lost.
struct RowMarks {
    std::vector<std::vector<uint64_t>> names; // by level, then by row; 0 where the row lacks a value
    std::vector<uint64_t> wholes;             // by row
    size_t rows() const { return wholes.size(); }
};

constexpr size_t NO_ROW = SIZE_MAX;

/// The new report's row of every old one, or NO_ROW. Both have the same levels, tried in their order; those from
/// firstKey on are keys, by which rows are also paired in their order where a key is not unique. Rows without any key
/// are paired in their order at the end. Of rows with a name in common order, those that are wholly the same go first.
/// Rows that a level tells apart are never paired by a later one. Takes n log n steps, whatever the values are.
std::vector<size_t> pairRows(const RowMarks& old, const RowMarks& now, size_t firstKey);

/// Which of these hashes stand there once; 0 is none.
std::vector<bool> onlyOnes(const std::vector<uint64_t>& hashes);
} // namespace report
