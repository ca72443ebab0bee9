#include "tool/CommandLine.h"

#include <algorithm>
#include <numeric>

namespace tool
{
namespace
{
char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Letters to insert, remove or replace to make one word of the other, whatever their case.
size_t distance(std::string_view a, std::string_view b)
{
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t replaced = diagonal + (lower(a[i]) == lower(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

bool beginsWith(std::string_view word, std::string_view beginning)
{
    return word.size() > beginning.size() && distance(word.substr(0, beginning.size()), beginning) == 0;
}
} // namespace

std::string nearest(std::string_view word, std::span<const std::string> words)
{
    constexpr size_t kLongestWord = 64; // nobody mistypes more than that, and distances grow with the square
    word = word.substr(0, kLongestWord);
    std::string best;
    size_t least = std::max<size_t>(2, word.size() / 2) + 1;
    for (const std::string& candidate : words) {
        const size_t apart = !word.empty() && beginsWith(candidate, word) ? 1 : distance(word, candidate);
        if (apart < least) {
            least = apart;
            best = candidate;
        }
    }
    return best;
}

std::string suggestion(std::string_view word, std::span<const std::string> words)
{
    const std::string best = nearest(word, words);
    return best.empty() ? "" : "; did you mean " + best + "?";
}
} // namespace tool
