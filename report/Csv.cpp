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

std::string csvHeading(const Columns& columns, bool isForSpreadsheet)
{
    std::vector<std::string> cells = columns.names();
    for (std::string& cell : cells)
        cell = csvCell(cell, isForSpreadsheet);
    return joined(cells);
}

std::string csvRow(const Columns& columns, const Row& row, bool isForSpreadsheet)
{
    std::vector<std::string> cells(columns.size());
    for (const Value& value : row.values)
        if (const auto column = columns.column(value))
            cells[*column] = csvCell(valueText(value), isForSpreadsheet);
    return joined(cells);
}
} // namespace report
