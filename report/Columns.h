#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/Reader.h"

// The columns that a group has as a table. Which attributes occur is known when all rows were seen, so that what shows
// tables reads a report two times.

namespace report
{
/// The columns of one group: attributes of the catalog in its order, then others as they occur.
class Columns
{
public:
    void add(const Value& value);
    /// Absent for a value that was not added, as of a file that changed between the two times.
    std::optional<size_t> column(const Value& value) const;
    /// Elements, one a column.
    std::vector<std::string> names() const;
    /// Attributes, one a column; null for one that the catalog does not know.
    std::vector<const Attribute*> attributes() const;
    /// What a person reads above a column: "Total Size (MB)"; of one that the catalog does not know its element.
    std::vector<std::string> headings() const;
    size_t size() const { return known_.size() + other_.size(); }

private:
    std::map<size_t, const Attribute*> known_; // by position
    std::map<std::string, size_t, std::less<>> other_;
};

/// Columns of every group, by element.
class ColumnsSink : public ReportSink
{
public:
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

    std::map<std::string, Columns, std::less<>> groups;
    /// Why the report cannot become tables: more groups or columns than kMostGroups and kMostColumns; else empty.
    std::string failure;

    static constexpr size_t kMostGroups = 200, kMostColumns = 10'000;
};
} // namespace report
