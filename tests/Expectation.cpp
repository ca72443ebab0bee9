#include "tests/Expectation.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <vector>

static std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    if (text.empty() || text.back() != '\n')
        lines.push_back("\\ no newline at the end");
    return lines;
}

// The first stretch in which two texts differ, with three lines around it.
static std::string difference(const std::string& expected, const std::string& actual)
{
    constexpr size_t kContext = 3;
    constexpr size_t kMaxShown = 40;
    const std::vector<std::string> old = linesOf(expected);
    const std::vector<std::string> now = linesOf(actual);
    size_t same = 0;
    while (same < old.size() && same < now.size() && old[same] == now[same])
        ++same;
    size_t oldEnd = old.size();
    size_t nowEnd = now.size();
    while (oldEnd > same && nowEnd > same && old[oldEnd - 1] == now[nowEnd - 1]) {
        --oldEnd;
        --nowEnd;
    }
    std::ostringstream out;
    out << "@@ line " << same + 1 << ": " << oldEnd - same << " expected, " << nowEnd - same << " found @@\n";
    for (size_t i = same - std::min(same, kContext); i < same; ++i)
        out << "  " << old[i] << "\n";
    for (size_t i = same; i < oldEnd && i < same + kMaxShown; ++i)
        out << "- " << old[i] << "\n";
    for (size_t i = same; i < nowEnd && i < same + kMaxShown; ++i)
        out << "+ " << now[i] << "\n";
    for (size_t i = oldEnd; i < old.size() && i < oldEnd + kContext; ++i)
        out << "  " << old[i] << "\n";
    return out.str();
}

bool isRecording()
{
    const char* setting = getenv("INVHW_RECORD");
    return setting != nullptr && *setting == '1';
}

void expectContent(const std::string& file, const std::string& actual)
{
    if (isRecording()) {
        std::ofstream(file, std::ios::binary) << actual;
        return;
    }
    ASSERT_TRUE(std::filesystem::exists(file)) << file << " is missing; run the test with INVHW_RECORD=1 to write it";
    std::ifstream stream(file, std::ios::binary);
    const std::string expected(std::istreambuf_iterator<char>(stream), {});
    EXPECT_TRUE(expected == actual) << file << "\n" << difference(expected, actual);
}

namespace
{
// A line cut at its numbers: pieces 1, 3, 5 ... are digits.
std::vector<std::string> piecesOf(const std::string& line)
{
    std::vector<std::string> pieces(1);
    for (const char c : line) {
        const bool isDigit = c >= '0' && c <= '9';
        if (isDigit != (pieces.size() % 2 == 0))
            pieces.emplace_back();
        pieces.back() += c;
    }
    return pieces;
}

// The next number with at least as many digits; absent when it is too large to count.
std::optional<std::string> next(const std::string& digits)
{
    uint64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || number == UINT64_MAX)
        return std::nullopt;
    const std::string text = std::to_string(number + 1);
    return std::string(digits.size() - std::min(digits.size(), text.size()), '0') + text;
}

using Numbers = std::vector<size_t>; // those that change, counted from 1

// Which numbers make the second line of the first; none when anything else differs.
Numbers changed(const std::vector<std::string>& first, const std::vector<std::string>& second)
{
    Numbers numbers;
    if (first.size() != second.size())
        return {};
    for (size_t i = 0; i < first.size(); ++i) {
        if (first[i] == second[i])
            continue;
        if (i % 2 == 0 || next(first[i]) != second[i])
            return {};
        numbers.push_back((i + 1) / 2);
    }
    return numbers;
}
} // namespace

std::string foldedLines(const std::string& text)
{
    constexpr size_t kLeastRun = 100;
    std::vector<std::vector<std::string>> pieces;
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line); lines.push_back(line))
        pieces.push_back(piecesOf(line));
    std::ostringstream out;
    for (size_t i = 0; i < lines.size();) {
        const Numbers numbers = i + 1 < lines.size() ? changed(pieces[i], pieces[i + 1]) : Numbers();
        size_t end = i + 1;
        while (!numbers.empty() && end < lines.size() && changed(pieces[end - 1], pieces[end]) == numbers)
            ++end;
        const bool isRun = end - i >= kLeastRun;
        out << lines[i] << '\n';
        if (isRun) {
            out << "@@ and " << end - i - 1 << " lines with these numbers one larger each:";
            for (const size_t number : numbers)
                out << ' ' << number;
            out << '\n';
        }
        i = isRun ? end : i + 1;
    }
    std::string folded = out.str();
    if (!text.empty() && text.back() != '\n')
        folded.pop_back();
    return folded;
}
