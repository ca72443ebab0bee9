#pragma once

#include <string>
#include <string_view>

#include "report/Columns.h"

// The CSV form (RFC 4180): one text a group, whose heading names the elements that occur in it. What columns a group
// has is known when all its rows were seen, so that a report is read two times.

namespace report
{
/// A cell: in quotes where it holds what ends cells or lines. For spreadsheets, which take it for a formula, a cell
/// that begins with = + - or @ gets an apostrophe in front.
std::string csvCell(std::string_view text, bool isForSpreadsheet);

/// The heading and a row, each with its line end. A value that is there and empty is "", one that is not there nothing.
std::string csvHeading(const Columns& columns, bool isForSpreadsheet);
std::string csvRow(const Columns& columns, const Row& row, bool isForSpreadsheet);
} // namespace report
