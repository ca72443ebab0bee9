#include "report/terminal/Grid.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <libsmartcols.h>
#include <locale.h>
#include <memory>

#include "report/Text.h"
#include "report/Utf8.h"

namespace report
{
namespace
{
// The C library and libsmartcols measure characters by the locale: here by one of UTF-8, whatever the user's is.
class Utf8Locale
{
public:
    Utf8Locale() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr))
    {
        if (locale_ != nullptr)
            before_ = uselocale(locale_);
    }
    ~Utf8Locale()
    {
        if (locale_ == nullptr)
            return;
        uselocale(before_);
        freelocale(locale_);
    }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

private:
    locale_t locale_;
    locale_t before_ = nullptr;
};

size_t widthOf(char32_t code)
{
    const int width = wcwidth(static_cast<wchar_t>(code));
    return width < 0 ? 1 : static_cast<size_t>(width);
}

size_t widthInLocale(std::string_view text)
{
    size_t width = 0;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        width += widthOf(character.code);
        text.remove_prefix(character.bytes);
    }
    return width;
}
} // namespace

size_t displayWidth(std::string_view text)
{
    const Utf8Locale locale;
    return widthInLocale(text);
}
} // namespace report

namespace report::terminal
{
namespace
{
struct TableOwner {
    void operator()(libscols_table* table) const { scols_unref_table(table); }
};
using TablePointer = std::unique_ptr<libscols_table, TableOwner>;

struct TextOwner {
    void operator()(char* text) const { free(text); }
};

constexpr const char* kReset = "\033[0m";
constexpr const char* kBold = "\033[1m";

const char* sequenceOf(Tone tone)
{
    switch (tone) {
    case Tone::QUIET:
        return "\033[2m";
    case Tone::GOOD:
        return "\033[32m";
    case Tone::WARN:
        return "\033[33m";
    case Tone::BAD:
        return "\033[31m";
    case Tone::HEADING:
        return kBold;
    case Tone::PLAIN:
        break;
    }
    return nullptr;
}

// The bytes of a text that fill a line, at least one character.
size_t lineBytes(std::string_view text, size_t width)
{
    size_t bytes = 0, columns = 0, blank = 0;
    while (bytes < text.size()) {
        const Character character = firstCharacter(text.substr(bytes));
        columns += widthOf(character.code);
        if (columns > width && bytes != 0)
            return blank != 0 ? blank : bytes;
        if (character.code == ' ' && columns > width / 2)
            blank = bytes;
        bytes += character.bytes;
    }
    return bytes;
}

void addColumns(libscols_table* table, const std::vector<SummaryColumn>& columns, const std::vector<size_t>& widths,
                const GridForm& form)
{
    for (size_t i = 0; i < columns.size(); ++i) {
        const int flags =
            SCOLS_FL_WRAP | (columns[i].isNumber ? SCOLS_FL_RIGHT : 0) | (form.isTree && i == 0 ? SCOLS_FL_TREE : 0);
        libscols_column* column = scols_table_new_column(
            table, form.hasHeadings ? columns[i].name : "", // a name widens its column, seen or not
            static_cast<double>(std::max<size_t>(widths[i], 1)), flags);
        if (column == nullptr)
            return;
        scols_column_set_safechars(column, "\n");
        scols_column_set_wrapfunc(column, scols_wrapnl_chunksize, scols_wrapnl_nextchunk, nullptr);
        scols_cell_set_color(scols_column_get_header(column), kBold);
    }
}

void addLines(libscols_table* table, libscols_line* parent, const std::vector<SummaryLine>& lines,
              const std::vector<size_t>& widths, size_t depth)
{
    for (const SummaryLine& line : lines) {
        libscols_line* added = scols_table_new_line(table, parent);
        if (added == nullptr)
            return;
        for (size_t i = 0; i < line.cells.size(); ++i) {
            const SummaryCell& cell = line.cells[i];
            const size_t branches = i == 0 ? std::min(kBranch * depth, widths[i]) : 0;
            scols_line_set_data(added, i, wrapped(cell.text, widths[i] - branches).c_str());
            if (const char* sequence = sequenceOf(cell.tone); sequence != nullptr && !cell.text.empty())
                scols_cell_set_color(scols_line_get_cell(added, i), sequence);
        }
        addLines(table, added, line.children, widths, depth + 1);
    }
}

// Whether a heading is longer than its column, which the library would widen.
bool areHeadingsLonger(const std::vector<SummaryColumn>& columns, const std::vector<size_t>& widths)
{
    for (size_t i = 0; i < columns.size(); ++i)
        if (widthInLocale(columns[i].name) > widths[i])
            return true;
    return false;
}

SummaryLine headingLine(const std::vector<SummaryColumn>& columns)
{
    SummaryLine line;
    for (const SummaryColumn& column : columns)
        line.cells.push_back({column.name, Tone::HEADING});
    return line;
}

// Every line behind so many blanks, without blanks at its end.
std::string indented(std::string_view text, size_t indent)
{
    std::string result;
    std::string_view line;
    while (takeLine(text, line)) {
        line = line.substr(0, line.find_last_not_of(' ') + 1);
        result += (line.empty() ? "" : std::string(indent, ' ')).append(line) + '\n';
    }
    return result;
}
} // namespace

std::string shownText(std::string_view text, const TerminalStyle& style)
{
    std::string shown = visibleText(text);
    if (style.isUtf8)
        return shown;
    std::string ascii;
    for (const char c : shown)
        if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80)
            ascii += static_cast<unsigned char>(c) < 0x80 ? c : '?';
    return ascii;
}

std::string wrapped(std::string_view text, size_t width)
{
    const Utf8Locale locale;
    std::string lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, lineBytes(text, std::max<size_t>(width, 1)));
        lines += (lines.empty() ? "" : "\n") + std::string(line);
        text.remove_prefix(line.size());
        if (!text.empty() && text[0] == ' ')
            text.remove_prefix(1);
    }
    return lines;
}

bool fit(std::vector<size_t>& widths, const std::vector<size_t>& least, size_t width)
{
    std::vector<size_t> fitted = widths;
    size_t total = fitted.empty() ? 0 : kGap * (fitted.size() - 1);
    for (const size_t each : fitted)
        total += each;
    for (; total > width; --total) {
        size_t* widest = nullptr;
        for (size_t i = 0; i < fitted.size(); ++i)
            if (fitted[i] > least[i] && (widest == nullptr || fitted[i] > *widest))
                widest = &fitted[i];
        if (widest == nullptr)
            return false;
        --*widest;
    }
    widths = fitted;
    return true;
}

size_t wordWidth(std::string_view text)
{
    size_t longest = 0;
    for (const std::string_view word : words(text))
        longest = std::max(longest, displayWidth(word));
    return longest;
}

std::string drawn(const std::vector<SummaryColumn>& columns, const std::vector<size_t>& widths,
                  const std::vector<SummaryLine>& lines, const GridForm& form, const TerminalStyle& style)
{
    const Utf8Locale locale;
    const TablePointer table(scols_new_table());
    if (table == nullptr || lines.empty())
        return {};
    // Lines are as long as the widths say: the library shall look for no terminal.
    scols_table_set_termforce(table.get(), SCOLS_TERMFORCE_NEVER);
    scols_table_set_column_separator(table.get(), std::string(kGap, ' ').c_str());
    const bool areLinesHeadings = form.hasHeadings && areHeadingsLonger(columns, widths);
    const bool hasHeadings = form.hasHeadings && !areLinesHeadings;
    scols_table_enable_noheadings(table.get(), hasHeadings ? 0 : 1);
    scols_table_enable_colors(table.get(), style.hasColours ? 1 : 0);
    scols_table_enable_ascii(table.get(), style.isUtf8 ? 0 : 1);
    scols_table_enable_noencoding(table.get(), 1);
    addColumns(table.get(), columns, widths, {hasHeadings, form.isTree});
    if (areLinesHeadings)
        addLines(table.get(), nullptr, {headingLine(columns)}, widths, 0);
    addLines(table.get(), nullptr, lines, widths, 0);
    char* text = nullptr;
    if (scols_print_table_to_string(table.get(), &text) != 0)
        return {};
    const std::unique_ptr<char, TextOwner> owner(text);
    std::string drawing(text != nullptr ? text : "");
    if (!drawing.empty() && drawing.back() != '\n')
        drawing += '\n';
    return indented(drawing, form.indent);
}

std::string toned(const std::string& text, Tone tone, const TerminalStyle& style)
{
    const char* sequence = sequenceOf(tone);
    return style.hasColours && sequence != nullptr ? sequence + text + kReset : text;
}

std::string bold(const std::string& text, const TerminalStyle& style)
{
    return style.hasColours ? kBold + text + kReset : text;
}
} // namespace report::terminal
