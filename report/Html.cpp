#include "report/Html.h"

#include <algorithm>
#include <cstdio>
#include <openssl/evp.h>

#include "report/Identity.h"
#include "report/Text.h"
#include "report/Utf8.h"
#include "report/Writer.h"
#include "report/html/Parts.h"

namespace report
{
namespace
{
constexpr size_t kManyColumns = 9; // more do not fit on paper
constexpr uint64_t kLyingRows = 4; // as many fit beside each other
constexpr size_t kWideColumns = 4; // a list of more takes the page's whole width
constexpr size_t kDeepest = 6;     // of a tree's levels that the style knows

bool isAlphanumeric(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The name of a group in addresses: its element, where a report has no surprise for addresses and selectors in it.
std::string anchorOf(std::string_view element, size_t ordinal)
{
    const bool isPlain = !element.empty() && std::all_of(element.begin(), element.end(), isAlphanumeric);
    return "g-" + (isPlain ? std::string(element) : std::to_string(ordinal));
}

// A text in the quotes of a style sheet: whatever is no letter or digit by its number.
std::string styleText(std::string_view text)
{
    std::string quoted;
    const std::string visible = visibleText(text);
    for (std::string_view rest = visible; !rest.empty();) {
        const Character character = firstCharacter(rest);
        char number[16];
        snprintf(number, sizeof number, "\\%X ", static_cast<unsigned>(character.code));
        const bool isPlain = character.bytes == 1 && isAlphanumeric(static_cast<char>(character.code));
        quoted += isPlain ? rest.substr(0, 1) : std::string_view(number);
        rest.remove_prefix(character.bytes);
    }
    return quoted;
}

// As a content security policy names a text that it allows.
std::string policyDigest(std::string_view text)
{
    std::string bytes;
    const std::string digits = sha256(text);
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(parseNumber<unsigned>(std::string_view(digits).substr(i, 2), 16).value_or(0));
    std::vector<unsigned char> encoded(bytes.size() * 2);
    const int length = EVP_EncodeBlock(encoded.data(), reinterpret_cast<const unsigned char*>(bytes.data()),
                                       static_cast<int>(bytes.size()));
    return "'sha256-" + std::string(encoded.begin(), encoded.begin() + length) + "'";
}

bool isNumber(const Attribute* attribute)
{
    return attribute != nullptr && attribute->type != VEX_STRING && attribute->type != VEX_DATETIME &&
           attribute->enums == nullptr;
}

const char* kindOf(const Attribute* attribute)
{
    if (attribute != nullptr && attribute->type == VEX_DATETIME)
        return "date";
    return isNumber(attribute) ? "number" : "text";
}

// Date-times as people read them.
std::string textOf(const Value& value)
{
    const auto* time = std::get_if<DateTime>(&value.content);
    if (time == nullptr)
        return valueText(value);
    std::string text = rfc3339(*time);
    text.replace(text.find('T'), 1, " ");
    return text;
}

std::string sourceOf(const Attribute* attribute)
{
    std::string source(attribute != nullptr ? attribute->source : "");
    source.erase(std::remove(source.begin(), source.end(), '`'), source.end());
    return source;
}

const char* toneClass(Tone tone)
{
    switch (tone) {
    case Tone::QUIET:
        return "t-quiet";
    case Tone::GOOD:
        return "t-good";
    case Tone::WARN:
        return "t-warn";
    case Tone::BAD:
        return "t-bad";
    case Tone::HEADING:
    case Tone::PLAIN:
        break;
    }
    return "";
}

std::string classAttribute(const std::vector<std::string>& classes)
{
    std::string names;
    for (const std::string& name : classes)
        if (!name.empty())
            names += (names.empty() ? "" : " ") + name;
    return names.empty() ? "" : " class=\"" + names + '"';
}

// A share as a bar, too; how full is too full the style of bars says by itself.
std::string cellText(const SummaryCell& cell)
{
    std::string text = htmlText(cell.text);
    if (!cell.share)
        return text;
    char bar[96];
    snprintf(bar, sizeof bar, "<meter min=\"0\" max=\"100\" low=\"85\" high=\"95\" optimum=\"0\" value=\"%d\"></meter>",
             static_cast<int>(*cell.share * 100));
    return bar + text;
}

void writeFacts(const SummarySection& section, std::ostream& out)
{
    if (section.facts.empty())
        return;
    out << "<dl>\n";
    for (const SummaryFact& fact : section.facts)
        out << "<div><dt>" << htmlText(fact.label) << "</dt><dd" << classAttribute({toneClass(fact.cell.tone)}) << '>'
            << cellText(fact.cell) << "</dd></div>\n";
    out << "</dl>\n";
}

void writeLine(const SummarySection& section, const SummaryLine& line, size_t depth, std::ostream& out)
{
    out << "<tr>";
    for (size_t i = 0; i < line.cells.size(); ++i) {
        const std::string level = i == 0 && depth != 0 ? "d" + std::to_string(std::min(depth, kDeepest)) : "";
        const std::string number = section.columns[i].isNumber ? "n" : "";
        out << "<td" << classAttribute({level, number, toneClass(line.cells[i].tone)}) << '>' << cellText(line.cells[i])
            << "</td>";
    }
    out << "</tr>\n";
    for (const SummaryLine& child : line.children)
        writeLine(section, child, depth + 1, out);
}

void writeLines(const SummarySection& section, std::ostream& out)
{
    if (section.lines.empty())
        return;
    out << "<div class=\"scroll\" tabindex=\"0\" role=\"region\" aria-label=\"" << section.title
        << "\"><table><thead><tr>";
    for (const SummaryColumn& column : section.columns)
        out << "<th scope=\"col\"" << (column.isNumber ? " class=\"n\"" : "") << '>' << htmlText(column.name)
            << "</th>";
    out << "</tr></thead><tbody>\n";
    for (const SummaryLine& line : section.lines)
        writeLine(section, line, 0, out);
    out << "</tbody></table></div>\n";
    if (section.left != 0)
        out << "<p class=\"more\">and " << section.left << " more</p>\n";
}

void writeCard(const SummarySection& section, std::ostream& out)
{
    const bool isWide = section.columns.size() >= kWideColumns && !section.lines.empty();
    out << "<section class=\"card" << (isWide ? " wide" : "") << "\" id=\"" << section.id << "\"><h2>" << section.title
        << "</h2>\n";
    writeFacts(section, out);
    writeLines(section, out);
    out << "</section>\n";
}

void writeHead(const Summary& summary, const std::string& style, std::ostream& out)
{
    out << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
        << policyDigest(style) << "; script-src " << policyDigest(PAGE_SCRIPT)
        << "; base-uri 'none'; form-action 'none'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"referrer\" content=\"no-referrer\">\n<title>"
        << htmlText(summary.name) << "</title>\n<style>" << style << "</style>\n</head>\n<body>\n";
}

void writeHeader(const Summary& summary, bool hasSources, std::ostream& out)
{
    std::string what = summary.model == summary.name ? "" : summary.model;
    if (!summary.system.empty())
        what += (what.empty() ? "" : " \xC2\xB7 ") + summary.system;
    std::string made = summary.date.empty() ? "" : "Scanned " + summary.date;
    if (!summary.program.empty())
        made += (made.empty() ? "Reported by " : " by ") + summary.program;
    out << "<header><h1>" << htmlText(summary.name) << "</h1>\n";
    if (!what.empty())
        out << "<p>" << htmlText(what) << "</p>\n";
    if (!made.empty())
        out << "<p class=\"made\">" << htmlText(made) << "</p>\n";
    out << "</header>\n";
    if (hasSources)
        out << "<input type=\"checkbox\" id=\"sources\">\n";
    out << "<div class=\"tools\" role=\"search\">"
           "<input type=\"search\" id=\"everywhere\" placeholder=\"Filter all groups\" aria-label=\"Filter all "
           "groups\" "
           "data-script hidden>"
           "<button type=\"button\" id=\"open\" data-script hidden>Open all</button>"
           "<button type=\"button\" id=\"close\" data-script hidden>Close all</button>";
    if (hasSources)
        out << "<label for=\"sources\">Where values come from</label>";
    out << "<output id=\"found\"></output></div>\n";
}

void writeNavigation(const std::vector<HtmlTable>& tables, std::ostream& out)
{
    out << "<nav aria-label=\"Groups\"><ol>\n";
    for (const HtmlTable& table : tables)
        out << "<li><a href=\"#" << table.anchor() << "\">" << htmlText(table.name()) << " <span class=\"count\">"
            << table.rows() << "</span></a></li>\n";
    out << "</ol></nav>\n";
}
} // namespace

std::string htmlText(std::string_view text)
{
    std::string escaped;
    const std::string visible = visibleText(text);
    escaped.reserve(visible.size());
    for (const char c : visible) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&#39;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

HtmlTable::HtmlTable(std::string_view element, const Columns& columns, uint64_t rows, size_t ordinal)
    : name_(element), anchor_(anchorOf(element, ordinal)), columns_(columns), headings_(columns.headings()),
      attributes_(columns.attributes()), rows_(rows),
      isLying_(rows == 1 || (rows <= kLyingRows && columns.size() > kManyColumns))
{
    if (const Group* group = findGroup(element))
        name_ = group->name;
}

std::string HtmlTable::style() const
{
    std::string style;
    if (isLying_)
        return style;
    const std::string cell = "#" + anchor_ + " td:nth-child(";
    for (size_t i = 0; i < headings_.size(); ++i)
        if (isNumber(attributes_[i]))
            style += cell + std::to_string(i + 1) + "){text-align:right;font-variant-numeric:tabular-nums}\n";
    if (headings_.size() <= kManyColumns)
        return style;
    style += "@media print{\n";
    for (size_t i = 0; i < headings_.size(); ++i)
        style += cell + std::to_string(i + 1) + ")::before{content:\"" + styleText(headings_[i]) + "\\A0 \"}\n";
    return style + "}\n";
}

void HtmlTable::begin(bool isOpen, std::ostream& out) const
{
    const bool isMany = !isLying_ && headings_.size() > kManyColumns;
    out << "<section class=\"group\"><details id=\"" << anchor_ << "\" data-name=\"" << htmlText(name_) << '"'
        << (isOpen ? " open" : "") << "><summary><h2>" << htmlText(name_) << "</h2><span class=\"count\">" << rows_
        << (rows_ == 1 ? " row" : " rows") << "</span></summary>\n<div class=\"scroll\" tabindex=\"0\" role=\"region\" "
        << "aria-label=\"" << htmlText(name_) << "\"><table"
        << classAttribute({isLying_ ? "record" : "", isMany ? "many" : ""}) << "><thead><tr>";
    if (isLying_) {
        out << "<th scope=\"col\" data-kind=\"text\">Attribute</th>";
        for (uint64_t i = 1; i <= rows_; ++i)
            out << "<th scope=\"col\" data-kind=\"number\">" << (rows_ == 1 ? "Value" : std::to_string(i)) << "</th>";
    }
    for (size_t i = 0; i < headings_.size() && !isLying_; ++i)
        out << "<th scope=\"col\" data-kind=\"" << kindOf(attributes_[i]) << "\" title=\""
            << htmlText(sourceOf(attributes_[i])) << '"' << classAttribute({isNumber(attributes_[i]) ? "n" : ""}) << '>'
            << htmlText(headings_[i]) << "</th>";
    out << "</tr></thead><tbody>\n";
}

void HtmlTable::row(const Row& row, std::ostream& out)
{
    std::vector<std::string> cells(headings_.size());
    for (const Value& value : row.values)
        if (const auto column = columns_.column(value)) {
            cells[*column] = htmlText(textOf(value));
            if (!value.source.empty())
                cells[*column] += "<span class=\"source\">" + htmlText(value.source) + "</span>";
        }
    if (isLying_) {
        cells_.push_back(std::move(cells));
        return;
    }
    out << "<tr>";
    for (const std::string& cell : cells)
        out << "<td>" << cell << "</td>";
    out << "</tr>\n";
}

void HtmlTable::writeLying(std::ostream& out) const
{
    for (size_t i = 0; i < headings_.size(); ++i) {
        out << "<tr><th scope=\"row\" title=\"" << htmlText(sourceOf(attributes_[i])) << "\">" << htmlText(headings_[i])
            << "</th>";
        for (const std::vector<std::string>& cells : cells_)
            out << "<td>" << cells[i] << "</td>";
        out << "</tr>\n";
    }
}

void HtmlTable::end(std::ostream& out) const
{
    if (isLying_)
        writeLying(out);
    out << "</tbody></table></div></details></section>\n";
}

void beginPage(const Summary& summary, const std::vector<HtmlTable>& tables, bool hasSources, std::ostream& out)
{
    std::string style(PAGE_STYLE);
    for (const HtmlTable& table : tables)
        style += table.style();
    writeHead(summary, style, out);
    writeHeader(summary, hasSources, out);
    out << "<div class=\"page\">\n";
    writeNavigation(tables, out);
    out << "<main>\n<div class=\"cards\">\n";
    for (const SummarySection& section : summary.sections)
        writeCard(section, out);
    out << "</div>\n";
}

void endPage(const Summary& summary, std::ostream& out)
{
    out << "</main>\n</div>\n";
    if (!summary.program.empty())
        out << "<footer>" << htmlText(summary.program) << "</footer>\n";
    out << "<script>" << PAGE_SCRIPT << "</script>\n</body>\n</html>\n";
}
} // namespace report
