#include "host/text/NumberList.h"

#include <set>

#include "report/Text.h"

namespace host
{
std::vector<uint32_t> numbersOfList(std::string_view list)
{
    constexpr size_t kMost = 65536;
    std::set<uint32_t> numbers;
    for (const std::string_view piece : report::split(report::trimmed(list), ',')) {
        const size_t dash = piece.find('-');
        const auto first = report::parseNumber<uint32_t>(piece.substr(0, dash));
        const auto last =
            dash == std::string_view::npos ? first : report::parseNumber<uint32_t>(piece.substr(dash + 1));
        if (!first || !last)
            continue;
        for (uint64_t number = *first; number <= *last && numbers.size() < kMost; ++number)
            numbers.insert(static_cast<uint32_t>(number));
    }
    return {numbers.begin(), numbers.end()};
}

size_t countOfList(std::string_view list)
{
    return numbersOfList(list).size();
}
} // namespace host
