#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "report/Columns.h"
#include "report/Summary.h"

// A report as one HTML page that needs nothing from elsewhere, neither files nor network: a policy in its head allows
// its own style and script by their digests and nothing else. Every text of a report is escaped, and what it holds that
// does something in place of being seen is shown by its number.

namespace report
{
/// The text as it may stand in an element or in an attribute's quotes.
std::string htmlText(std::string_view text);

/// One group as a table: rows are written as they come. A group of few rows and many attributes lies on its side, an
/// attribute a line, so that it can be read.
class HtmlTable
{
public:
    /// The columns must live as long as the table; ordinal makes its names in the page unique.
    HtmlTable(std::string_view element, const Columns& columns, uint64_t rows, size_t ordinal);

    const std::string& name() const { return name_; }
    const std::string& anchor() const { return anchor_; }
    uint64_t rows() const { return rows_; }
    /// What the page's style must say of this table: numbers at the right, names of columns where paper is too narrow.
    std::string style() const;

    void row(const Row& row, std::ostream& out);
    /// What stands before and behind the rows, which must all have been given before end() is called. A table that is
    /// not open waits until somebody opens it.
    void begin(bool isOpen, std::ostream& out) const;
    void end(std::ostream& out) const;

private:
    void writeLying(std::ostream& out) const;

    std::string name_;
    std::string anchor_;
    const Columns& columns_;
    std::vector<std::string> headings_;
    std::vector<const Attribute*> attributes_;
    uint64_t rows_;
    bool isLying_;
    std::vector<std::vector<std::string>> cells_; // of the rows of a table that lies
};

/// The page before its tables, and behind them. hasSources: some value tells where it came from.
void beginPage(const Summary& summary, const std::vector<HtmlTable>& tables, bool hasSources, std::ostream& out);
void endPage(const Summary& summary, std::ostream& out);
} // namespace report
