#include "host/text/NumberList.h"

#include <algorithm>
#include <utility>

#include "report/Text.h"

namespace host
{
namespace
{
using Range = std::pair<uint64_t, uint64_t>; // first and last

std::vector<Range> rangesOfList(std::string_view list)
{
    std::vector<Range> ranges;
    for (const std::string_view piece : report::split(report::trimmed(list), ',')) {
        const size_t dash = piece.find('-');
        const auto first = report::parseNumber<uint32_t>(piece.substr(0, dash));
        const auto last =
            dash == std::string_view::npos ? first : report::parseNumber<uint32_t>(piece.substr(dash + 1));
        if (first && last)
            ranges.emplace_back(*first, *last);
    }
    return ranges;
}
} // namespace

// Ranges that overlap cost no more than those that do not: a lying list may repeat the largest one for ever.
std::vector<uint32_t> numbersOfList(std::string_view list)
{
    constexpr size_t kMost = 65536;
    std::vector<Range> ranges = rangesOfList(list);
    std::sort(ranges.begin(), ranges.end());
    std::vector<uint32_t> numbers;
    uint64_t next = 0; // all below are there
    for (const auto& [first, last] : ranges)
        for (next = std::max(next, first); next <= last && numbers.size() < kMost; ++next)
            numbers.push_back(static_cast<uint32_t>(next));
    return numbers;
}

size_t countOfList(std::string_view list)
{
    return numbersOfList(list).size();
}
} // namespace host
