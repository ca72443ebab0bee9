#include "report/Text.h"

#include <algorithm>

namespace report
{
namespace
{
constexpr std::string_view kBlanks = " \t\r\n\f\v";
} // namespace

std::string_view trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string lower(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return result;
}

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + 1);
        if (text.empty())
            pieces.push_back(text);
    }
    return pieces;
}

std::vector<std::string_view> words(std::string_view text)
{
    std::vector<std::string_view> found;
    for (size_t begin = text.find_first_not_of(kBlanks); begin != std::string_view::npos;
         begin = text.find_first_not_of(kBlanks)) {
        text.remove_prefix(begin);
        const size_t length = std::min(text.find_first_of(kBlanks), text.size());
        found.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return found;
}

bool takeLine(std::string_view& text, std::string_view& line)
{
    if (text.empty())
        return false;
    const size_t end = text.find('\n');
    line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return true;
}

KeyValue keyValue(std::string_view line, char separator)
{
    const size_t place = line.find(separator);
    if (place == std::string_view::npos)
        return {{}, trimmed(line)};
    return {trimmed(line.substr(0, place)), trimmed(line.substr(place + 1))};
}

std::optional<uint64_t> leadingNumber(std::string_view text)
{
    uint64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() ? std::optional<uint64_t>(number) : std::nullopt;
}
} // namespace report
