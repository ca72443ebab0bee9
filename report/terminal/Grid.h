#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "report/Summary.h"
#include "report/Terminal.h"

// Lines of cells as libsmartcols draws them.

namespace report::terminal
{
constexpr size_t kGap = 2;    // blanks between columns
constexpr size_t kBranch = 2; // characters that a tree takes a level

/// The text as a terminal of this style can show it.
std::string shownText(std::string_view text, const TerminalStyle& style);

/// The text in lines of at most so many columns, with line feeds between them: broken at blanks where that leaves no
/// more than half of a line unused.
std::string wrapped(std::string_view text, size_t width);

/// Makes the widest columns narrower until all fit, none below its least width; false, and widths as they were, when
/// they cannot.
bool fit(std::vector<size_t>& widths, const std::vector<size_t>& least, size_t width);

/// The width of the longest word of a text.
size_t wordWidth(std::string_view text);

/// How a grid is drawn.
struct GridForm {
    bool hasHeadings = true;
    bool isTree = false; // the first column
    size_t indent = 0;
};

/// Draws lines in columns of these widths; longer headings and cells are wrapped. Cells are as shownText gives them.
std::string drawn(const std::vector<SummaryColumn>& columns, const std::vector<size_t>& widths,
                  const std::vector<SummaryLine>& lines, const GridForm& form, const TerminalStyle& style);

/// The text between the escape sequences of a tone, when there are colours.
std::string toned(const std::string& text, Tone tone, const TerminalStyle& style);
std::string bold(const std::string& text, const TerminalStyle& style);
} // namespace report::terminal
