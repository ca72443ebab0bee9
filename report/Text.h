#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Small things that every reader of texts needs. Views live as long as what they were cut from.

namespace report
{
/// The text without blanks, tabs and line ends at both ends.
std::string_view trimmed(std::string_view text);

/// ASCII letters in lower case, all else as it is.
std::string lower(std::string_view text);

/// The pieces between separators, empty ones too; of an empty text none.
std::vector<std::string_view> split(std::string_view text, char separator);

/// The words between blanks and tabs.
std::vector<std::string_view> words(std::string_view text);

/// Cuts the first line, without its end, from the front of the text; false when the text is empty.
bool takeLine(std::string_view& text, std::string_view& line);

/// The two trimmed sides of the first separator; the first is empty when the line has none.
struct KeyValue {
    std::string_view key, value;
};
KeyValue keyValue(std::string_view line, char separator);

/// The number that is the whole text, in a base of 10 or 16 (without 0x); absent when it is none or does not fit.
template <typename T = uint64_t>
std::optional<T> parseNumber(std::string_view text, int base = 10)
{
    T number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// The decimal number that the text begins with ("16384 kB"); absent when it begins with none or it does not fit.
std::optional<uint64_t> leadingNumber(std::string_view text);
} // namespace report
