#include "report/Terminal.h"

#include <algorithm>

#include "report/Text.h"
#include "report/Writer.h"
#include "report/terminal/Grid.h"

namespace report
{
namespace
{
using namespace terminal;

constexpr size_t kIndent = 2;
constexpr size_t kLinesAtOnce = 500;
constexpr size_t kNarrowest = 14; // a column that still reads well

// Copies of lines whose texts can be shown, as the grid takes them.
std::vector<SummaryLine> shownLines(const std::vector<SummaryLine>& lines, const TerminalStyle& style)
{
    std::vector<SummaryLine> shown = lines;
    for (SummaryLine& line : shown) {
        for (SummaryCell& cell : line.cells)
            cell.text = shownText(cell.text, style);
        line.children = shownLines(line.children, style);
    }
    return shown;
}

// Widths that show everything; the branches of a tree take two columns a level.
void widen(std::vector<size_t>& widths, const std::vector<SummaryLine>& lines, size_t depth)
{
    for (const SummaryLine& line : lines) {
        for (size_t i = 0; i < line.cells.size(); ++i)
            widths[i] = std::max(widths[i], displayWidth(line.cells[i].text) + (i == 0 ? kBranch * depth : 0));
        widen(widths, line.children, depth + 1);
    }
}

void printFacts(const SummarySection& section, const TerminalStyle& style, std::ostream& out)
{
    std::vector<SummaryLine> lines;
    std::vector<size_t> widths(2);
    for (const SummaryFact& fact : section.facts) {
        SummaryCell value = fact.cell;
        value.text = shownText(value.text, style);
        lines.push_back({{{fact.label, Tone::QUIET}, std::move(value)}});
    }
    widen(widths, lines, 0);
    if (style.width != 0)
        widths[1] = std::min(widths[1], std::max(style.width, widths[0] + 3 * kGap + 20) - widths[0] - kGap - kIndent);
    out << drawn({{"label"}, {"value"}}, widths, lines, {.hasHeadings = false, .indent = kIndent}, style);
}

// The widths below which words are broken; of the branches of a tree, too.
void widenWords(std::vector<size_t>& least, const std::vector<SummaryLine>& lines, size_t depth)
{
    for (const SummaryLine& line : lines) {
        for (size_t i = 0; i < line.cells.size(); ++i)
            least[i] = std::max(least[i], wordWidth(line.cells[i].text) + (i == 0 ? kBranch * depth : 0));
        widenWords(least, line.children, depth + 1);
    }
}

// First lines are broken at blanks; a summary has so few columns that each may become narrow, too. On a terminal where
// that does not do either, lines are longer than it is wide.
void fitSummary(std::vector<size_t>& widths, const std::vector<SummaryLine>& lines, size_t width)
{
    std::vector<size_t> least(widths.size());
    widenWords(least, lines, 0);
    const size_t names = least[0]; // whose words are broken last
    constexpr size_t kVeryNarrow = 6, kLeast = 3;
    for (size_t narrowest = kNarrowest; !fit(widths, least, width) && narrowest >= kLeast; --narrowest) {
        least.assign(widths.size(), narrowest);
        if (narrowest >= kVeryNarrow)
            least[0] = std::max(names, narrowest);
    }
}

void printLines(const SummarySection& section, const TerminalStyle& style, std::ostream& out)
{
    if (section.lines.empty())
        return;
    const std::vector<SummaryLine> lines = shownLines(section.lines, style);
    std::vector<size_t> widths;
    for (const SummaryColumn& column : section.columns)
        widths.push_back(std::string_view(column.name).size());
    widen(widths, lines, 0);
    if (style.width > kIndent)
        fitSummary(widths, lines, style.width - kIndent);
    const bool isTree =
        std::any_of(lines.begin(), lines.end(), [](const SummaryLine& line) { return !line.children.empty(); });
    out << drawn(section.columns, widths, lines, {.isTree = isTree, .indent = kIndent}, style);
}

void printSection(const SummarySection& section, const TerminalStyle& style, std::ostream& out)
{
    out << '\n' << bold(section.title, style) << '\n';
    printFacts(section, style, out);
    if (!section.facts.empty() && !section.lines.empty())
        out << '\n';
    printLines(section, style, out);
    if (section.left != 0 && section.group != nullptr)
        out << std::string(kIndent, ' ') << "and " << section.left << " more: --group \"" << section.group << "\"\n";
}

// Every group with its rows, so that nobody has to guess what --group may name.
void printGroups(const Summary& summary, const TerminalStyle& style, std::ostream& out)
{
    std::string text;
    for (const auto& [name, rows] : summary.groups)
        text += (text.empty() ? "" : ", ") + shownText(name, style) + ' ' + std::to_string(rows);
    if (text.empty())
        return;
    const size_t width = style.width > kIndent ? style.width - kIndent : displayWidth(text);
    out << '\n' << bold("Rows by group", style) << '\n';
    out << drawn({{"groups"}}, {std::min(width, displayWidth(text))}, {{{{text}}}},
                 {.hasHeadings = false, .indent = kIndent}, style);
}
} // namespace

void printSummary(const Summary& summary, const TerminalStyle& style, std::ostream& out)
{
    out << bold(shownText(summary.name, style), style) << '\n';
    std::string made = summary.date.empty() ? "" : "scanned " + shownText(summary.date, style);
    if (!summary.program.empty())
        made += (made.empty() ? "reported by " : " by ") + shownText(summary.program, style);
    if (!made.empty())
        out << toned(made, Tone::QUIET, style) << '\n';
    for (const SummarySection& section : summary.sections)
        printSection(section, style, out);
    printGroups(summary, style, out);
}

TerminalTable::TerminalTable(std::string name, const Columns& columns, const TerminalStyle& style)
    : name_(std::move(name)), columns_(columns), style_(style), names_(columns.headings())
{
    for (std::string& heading : names_) {
        heading = shownText(heading, style);
        widths_.push_back(0);
        words_.push_back(0);
    }
    const std::vector<const Attribute*> attributes = columns.attributes();
    for (size_t i = 0; i < names_.size(); ++i) {
        const bool isNumber = attributes[i] != nullptr && attributes[i]->type != VEX_STRING &&
                              attributes[i]->type != VEX_DATETIME && attributes[i]->enums == nullptr;
        headings_.push_back({names_[i].c_str(), isNumber});
    }
}

void TerminalTable::measure(const Row& row)
{
    ++rows_;
    for (const Value& value : row.values)
        if (const auto column = columns_.column(value)) {
            const std::string text = shownText(valueText(value), style_);
            widths_[*column] = std::max(widths_[*column], displayWidth(text));
            if (style_.width != 0)
                words_[*column] = std::max(words_[*column], wordWidth(text));
        }
}

// Columns as wide as headings and values; else headings are broken at blanks; else values, too; else some of them
// anywhere.
bool TerminalTable::fitTerminal()
{
    std::vector<size_t> whole = widths_, broken = widths_, least = words_;
    size_t total = 0;
    for (size_t i = 0; i < names_.size(); ++i) {
        whole[i] = std::max(widths_[i], displayWidth(names_[i]));
        total += whole[i] + (i == 0 ? 0 : kGap);
        broken[i] = std::max(broken[i], wordWidth(names_[i]));
        least[i] = std::max(least[i], wordWidth(names_[i]));
    }
    const bool isWider = style_.width != 0 && total > style_.width;
    widths_ = isWider ? broken : whole;
    if (!isWider || fit(widths_, least, style_.width))
        return true;
    for (size_t& each : least)
        each = std::min(each, kNarrowest);
    return fit(widths_, least, style_.width);
}

void TerminalTable::begin(std::ostream& out)
{
    hasBegun_ = true;
    out << bold(shownText(name_, style_), style_) << ": " << rows_ << (rows_ == 1 ? " row" : " rows") << '\n';
    isBlocks_ = !fitTerminal();
}

void TerminalTable::print(const Row& row, std::ostream& out)
{
    if (!hasBegun_)
        begin(out);
    SummaryLine line;
    line.cells.resize(columns_.size());
    for (const Value& value : row.values)
        if (const auto column = columns_.column(value))
            line.cells[*column].text = shownText(valueText(value), style_);
    if (isBlocks_) {
        printBlock(line, out);
        ++printed_;
        return;
    }
    lines_.push_back(std::move(line));
    if (lines_.size() >= kLinesAtOnce)
        flush(out);
}

// A row's values one below the other, those that it has.
void TerminalTable::printBlock(const SummaryLine& line, std::ostream& out) const
{
    std::vector<SummaryLine> lines;
    std::vector<size_t> widths(2);
    for (size_t i = 0; i < line.cells.size(); ++i)
        if (!line.cells[i].text.empty())
            lines.push_back({{{names_[i], Tone::QUIET}, line.cells[i]}});
    for (const std::string& name : names_)
        widths[0] = std::max(widths[0], displayWidth(name));
    const size_t taken = widths[0] + kGap + kIndent;
    widths[1] = style_.width > taken + kNarrowest ? style_.width - taken : kNarrowest;
    out << (printed_ != 0 ? "\n" : "");
    out << drawn({{"name"}, {"value"}}, widths, lines, {.hasHeadings = false, .indent = kIndent}, style_);
}

void TerminalTable::flush(std::ostream& out)
{
    out << drawn(headings_, widths_, lines_, {.hasHeadings = printed_ == 0}, style_);
    printed_ += lines_.size();
    lines_.clear();
}

void TerminalTable::end(std::ostream& out)
{
    if (!hasBegun_)
        begin(out);
    flush(out);
}
} // namespace report
