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

/// A character and the bytes that it takes; a byte that belongs to no well-formed one counts as U+FFFD.
struct Character {
    char32_t code;
    size_t bytes;
};

/// The character at the start of a text that is not empty.
Character firstCharacter(std::string_view text);

/// The text with every character that does something in place of being seen as its number ("<U+001B>"): controls of
/// both sets, what changes the direction of writing, breaks lines or has no width. What is left is safe to write to a
/// terminal and reads as it stands; bytes that belong to no character become U+FFFD.
std::string visibleText(std::string_view text);

/// The longest beginning of a valid UTF-8 text that has at most so many characters.
std::string_view firstCharacters(std::string_view text, size_t characters);
} // namespace report
