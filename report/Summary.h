#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report/Reader.h"

// What a person wants to know first of a machine, as data: the terminal and the HTML page show the same. Texts are as
// the report has them; whoever shows them sees to it that they only show.

namespace report
{
/// How good the news is.
enum class Tone : uint8_t { PLAIN, QUIET, GOOD, WARN, BAD, HEADING };

struct SummaryCell {
    std::string text;
    Tone tone = Tone::PLAIN;
    std::optional<double> share = {}; // of a size that has a used part: 0 to 1
};

/// One thing that is said of the whole section.
struct SummaryFact {
    const char* label;
    SummaryCell cell;
};

struct SummaryColumn {
    const char* name;
    bool isNumber = false; // reads best at the right
};

/// One line of a section's list, or of its tree.
struct SummaryLine {
    std::vector<SummaryCell> cells; // one for each column
    std::vector<SummaryLine> children = {};
};

struct SummarySection {
    const char* id; // "disks"
    const char* title;
    std::vector<SummaryFact> facts = {};
    std::vector<SummaryColumn> columns = {};
    std::vector<SummaryLine> lines = {};
    uint64_t left = 0;           // rows that are not among the lines, because there are too many
    const char* group = nullptr; // which group has all of them

    bool isEmpty() const { return facts.empty() && lines.empty(); }
};

/// The whole first page.
struct Summary {
    std::string name;                     // of the machine, as its network knows it; else of its model
    std::string model;                    // "Dell Inc. PowerEdge R740"
    std::string system;                   // operating system
    std::string program;                  // that made the report
    std::string date;                     // of the scan, RFC 3339; empty where the report does not tell it
    std::vector<SummarySection> sections; // those that have something to say
    std::vector<std::pair<std::string, uint64_t>> groups; // names and rows, in the report's order
};

/// Takes a report and keeps what a summary needs: of the groups that it looks at so many rows, of the others their
/// number.
class SummarySink : public ReportSink
{
public:
    void header(const Header& header) override;
    void group(const GroupRows& group, uint64_t line) override;
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

    /// The summary of what came until now.
    Summary summary() const;

    /// The groups that came, by their elements, in order.
    const std::vector<std::string>& elements() const { return order_; }

    /// Rows of a group by its element.
    const std::map<std::string, uint64_t, std::less<>>& rows() const { return rows_; }

    static constexpr size_t kMostRows = 1000;     // of one group
    static constexpr size_t kMostGroups = 10'000; // whose rows are counted

private:
    Report kept_;
    std::vector<std::string> order_; // elements
    std::map<std::string, uint64_t, std::less<>> rows_;
};
} // namespace report
