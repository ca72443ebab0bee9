#include "host/record/ByteText.h"

#include <cstdint>

namespace host
{
namespace
{
constexpr char32_t kFirstByte = 0xF700;

// A character at the front of a text; size 0: there is none.
struct Character {
    size_t size = 0;
    char32_t code = 0;
};
} // namespace

static uint8_t byteAt(std::string_view text, size_t at)
{
    return static_cast<uint8_t>(text[at]);
}

// Unicode 3.9, table 3-7.
static Character characterOf(std::string_view text)
{
    const uint8_t first = byteAt(text, 0);
    if (first < 0x80)
        return {1, first};
    const size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    if (first < 0xC2 || first > 0xF4 || text.size() < size)
        return {};
    char32_t code = first & (0x7Fu >> size);
    for (size_t i = 1; i < size; ++i) {
        if ((byteAt(text, i) & 0xC0) != 0x80)
            return {};
        code = code << 6 | (byteAt(text, i) & 0x3Fu);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < kLeast[size] || code > 0x10FFFF || isSurrogate ? Character{} : Character{size, code};
}

static bool isByteCharacter(const Character& character)
{
    return character.code >= kFirstByte + 0x80 && character.code <= kFirstByte + 0xFF;
}

static void appendByteCharacter(std::string& text, uint8_t byte)
{
    const char32_t code = kFirstByte + byte;
    text += static_cast<char>(0xE0 | code >> 12);
    text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
}

std::string textOfBytes(std::string_view bytes)
{
    std::string text;
    while (!bytes.empty()) {
        const Character character = characterOf(bytes);
        const bool isPlain = character.size != 0 && !isByteCharacter(character);
        const size_t size = isPlain ? character.size : 1;
        if (isPlain)
            text += bytes.substr(0, size);
        else
            appendByteCharacter(text, byteAt(bytes, 0));
        bytes.remove_prefix(size);
    }
    return text;
}

std::string bytesOfText(std::string_view text)
{
    std::string bytes;
    while (!text.empty()) {
        const Character character = characterOf(text);
        const size_t size = character.size != 0 ? character.size : 1;
        if (isByteCharacter(character))
            bytes += static_cast<char>(character.code - kFirstByte);
        else
            bytes += text.substr(0, size);
        text.remove_prefix(size);
    }
    return bytes;
}
} // namespace host
