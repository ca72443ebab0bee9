#include "report/Csv.h"

#include "report/Writer.h"

namespace report
{
namespace
{
constexpr const char* kLineEnd = "\r\n";

std::string joined(const std::vector<std::string>& cells)
{
    std::string line;
    for (const std::string& cell : cells)
        line += (&cell == &cells.front() ? "" : ",") + cell;
    return line + kLineEnd;
}
} // namespace

std::string csvCell(std::string_view text, bool isForSpreadsheet)
{
    const bool isFormula = !text.empty() && std::string_view("=+-@").find(text[0]) != text.npos;
    std::string cell(isForSpreadsheet && isFormula ? "'" : "");
    cell += text;
    if (!cell.empty() && cell.find_first_of("\",\r\n") == cell.npos)
        return cell;
    std::string quoted = "\"";
    for (const char c : cell)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + '"';
}

void CsvColumns::add(const Value& value)
{
    if (value.attribute != nullptr)
        known_.emplace(value.attribute->position, value.attribute);
    else
        other_.emplace(value.element, other_.size());
}

std::optional<size_t> CsvColumns::column(const Value& value) const
{
    if (value.attribute != nullptr) {
        const auto found = known_.find(value.attribute->position);
        return found != known_.end() ? std::optional<size_t>(std::distance(known_.begin(), found)) : std::nullopt;
    }
    const auto found = other_.find(value.element);
    return found != other_.end() ? std::optional<size_t>(known_.size() + found->second) : std::nullopt;
}

std::vector<std::string> CsvColumns::names() const
{
    std::vector<std::string> names;
    for (const auto& [position, attribute] : known_)
        names.push_back(attribute->element);
    names.resize(size());
    for (const auto& [element, column] : other_)
        names[known_.size() + column] = element;
    return names;
}

void CsvColumnsSink::row(const GroupRows& group, Row& row, const RowLines&)
{
    if (!failure.empty())
        return;
    CsvColumns& columns = groups[std::string(group.name())];
    for (const Value& value : row.values)
        columns.add(value);
    if (groups.size() > kMostGroups)
        failure = "more than " + std::to_string(kMostGroups) + " groups";
    if (columns.size() > kMostColumns)
        failure = std::string(group.name()) + " has more than " + std::to_string(kMostColumns) + " attributes";
}

std::string csvHeading(const CsvColumns& columns, bool isForSpreadsheet)
{
    std::vector<std::string> cells = columns.names();
    for (std::string& cell : cells)
        cell = csvCell(cell, isForSpreadsheet);
    return joined(cells);
}

std::string csvRow(const CsvColumns& columns, const Row& row, bool isForSpreadsheet)
{
    std::vector<std::string> cells(columns.size());
    for (const Value& value : row.values)
        if (const auto column = columns.column(value))
            cells[*column] = csvCell(valueText(value), isForSpreadsheet);
    return joined(cells);
}
} // namespace report
