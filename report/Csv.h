#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/Reader.h"

// The CSV form (RFC 4180): one text a group, whose heading names the elements that occur in it. What columns a group
// has is known when all its rows were seen, so that a report is read two times.

namespace report
{
/// A cell: in quotes where it holds what ends cells or lines. For spreadsheets, which take it for a formula, a cell
/// that begins with = + - or @ gets an apostrophe in front.
std::string csvCell(std::string_view text, bool isForSpreadsheet);

/// The columns of one group: attributes of the catalog in its order, then others as they occur.
class CsvColumns
{
public:
    void add(const Value& value);
    /// Absent for a value that was not added, as of a file that changed between the two times.
    std::optional<size_t> column(const Value& value) const;
    /// Elements, one a column.
    std::vector<std::string> names() const;
    size_t size() const { return known_.size() + other_.size(); }

private:
    std::map<size_t, const Attribute*> known_; // by position
    std::map<std::string, size_t, std::less<>> other_;
};

/// Columns of every group, by element.
class CsvColumnsSink : public ReportSink
{
public:
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

    std::map<std::string, CsvColumns, std::less<>> groups;
    /// Why the report cannot be CSV: more groups or columns than kMostGroups and kMostColumns; else empty.
    std::string failure;

    static constexpr size_t kMostGroups = 200, kMostColumns = 10'000;
};

/// The heading and a row, each with its line end. A value that is there and empty is "", one that is not there nothing.
std::string csvHeading(const CsvColumns& columns, bool isForSpreadsheet);
std::string csvRow(const CsvColumns& columns, const Row& row, bool isForSpreadsheet);
} // namespace report
