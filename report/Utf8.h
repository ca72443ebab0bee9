#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace report
{
/// The text as valid UTF-8 that XML 1.0 and JSON can hold: every byte that belongs to no well-formed character
/// (Unicode 3.9, table 3-7) and every character that XML does not allow (C0 controls but tab, line feed and carriage
/// return; U+FFFE and U+FFFF) becomes U+FFFD.
std::string validUtf8(std::string_view bytes);

/// The longest beginning of a valid UTF-8 text that has at most so many characters.
std::string_view firstCharacters(std::string_view text, size_t characters);
} // namespace report
