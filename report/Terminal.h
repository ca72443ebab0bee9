#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "report/Columns.h"
#include "report/Summary.h"

// Reports for a terminal, or for what a terminal's text is piped into. No character of a value does anything: controls
// and their like are shown by their numbers.

namespace report
{
/// What the place is like where the text goes.
struct TerminalStyle {
    size_t width = 0; // in characters; 0 where lines are as long as they need to be
    bool hasColours = false;
    bool isUtf8 = true; // else every character beyond ASCII becomes "?", and trees are drawn with ASCII
};

/// The whole page.
void printSummary(const Summary& summary, const TerminalStyle& style, std::ostream& out);

/// How wide a text is on a terminal, after what it says was made visible.
size_t displayWidth(std::string_view text);

/// One group as a table, in two steps so that memory holds some rows however many there are: all rows are measured,
/// then printed. Where the table is wider than the terminal headings and the widest columns are wrapped; where that
/// does not do, every row becomes a block of lines, one a value.
class TerminalTable
{
public:
    TerminalTable(std::string name, const Columns& columns, const TerminalStyle& style);

    void measure(const Row& row);
    /// After all were measured: rows in order, then the end.
    void print(const Row& row, std::ostream& out);
    void end(std::ostream& out);

private:
    void begin(std::ostream& out);
    bool fitTerminal();
    void printBlock(const SummaryLine& line, std::ostream& out) const;
    void flush(std::ostream& out);

    std::string name_;
    const Columns& columns_;
    TerminalStyle style_;
    std::vector<SummaryColumn> headings_;
    std::vector<std::string> names_;
    std::vector<size_t> widths_;     // of the columns: of their widest values, then as they are printed
    std::vector<size_t> words_;      // of the longest words
    std::vector<SummaryLine> lines_; // that wait for printing
    uint64_t rows_ = 0;              // that were measured
    uint64_t printed_ = 0;
    bool hasBegun_ = false;
    bool isBlocks_ = false;
};
} // namespace report
