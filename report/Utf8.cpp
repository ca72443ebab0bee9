#include "report/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace report
{
namespace
{
constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

// How a well-formed character may begin, and the range of its second byte; all further bytes are 80 to BF.
struct Lead {
    uint8_t first, last;   // of the first byte
    uint8_t length;        // in bytes
    uint8_t second, until; // of the second byte
};
constexpr Lead kLeads[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F},
    {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

uint8_t byteAt(std::string_view text, size_t index)
{
    return static_cast<uint8_t>(text[index]);
}

// Bytes of the well-formed character of several bytes at the start of the text, 0 when there is none.
size_t characterLength(std::string_view text)
{
    for (const Lead& lead : kLeads) {
        if (byteAt(text, 0) < lead.first || byteAt(text, 0) > lead.last)
            continue;
        if (text.size() < lead.length || byteAt(text, 1) < lead.second || byteAt(text, 1) > lead.until)
            return 0;
        for (size_t i = 2; i < lead.length; ++i)
            if (byteAt(text, i) < 0x80 || byteAt(text, i) > 0xBF)
                return 0;
        return lead.length;
    }
    return 0;
}

bool isAllowedAscii(uint8_t byte)
{
    return byte >= 0x20 || byte == '\t' || byte == '\n' || byte == '\r';
}

// Nearly all texts are of such bytes alone. No early end: so the compiler looks at many bytes at once.
bool isPlain(std::string_view bytes)
{
    bool isPlain = true;
    for (const char byte : bytes)
        isPlain &= static_cast<uint8_t>(byte) >= 0x20 && static_cast<uint8_t>(byte) < 0x80;
    return isPlain;
}

bool isNoncharacter(std::string_view character)
{
    return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

// Characters that are not seen and yet do something (Unicode's general categories Cc, Cf, Zl, Zp but for the marks that
// writings need, and noncharacters).
struct Range {
    char32_t first, last;
};
constexpr Range kUnseen[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x00AD, 0x00AD},   {0x061C, 0x061C}, {0x180E, 0x180E},
    {0x200B, 0x200B}, {0x200E, 0x200F}, {0x2028, 0x202E},   {0x2060, 0x206F}, {0xFEFF, 0xFEFF},
    {0xFFF9, 0xFFFB}, {0xFFFE, 0xFFFF}, {0xE0000, 0xE007F},
};

bool isUnseen(char32_t code)
{
    return std::any_of(std::begin(kUnseen), std::end(kUnseen),
                       [code](const Range& range) { return code >= range.first && code <= range.last; });
}
} // namespace

std::string validUtf8(std::string_view bytes)
{
    if (isPlain(bytes))
        return std::string(bytes);
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const bool isAscii = byteAt(bytes, 0) < 0x80;
        const size_t length = isAscii ? 1 : characterLength(bytes);
        const std::string_view character = bytes.substr(0, length == 0 ? 1 : length);
        const bool isAllowed = isAscii ? isAllowedAscii(byteAt(bytes, 0)) : length != 0 && !isNoncharacter(character);
        text += isAllowed ? character : kReplacement;
        bytes.remove_prefix(character.size());
    }
    return text;
}

Character firstCharacter(std::string_view text)
{
    constexpr char32_t kUnknown = 0xFFFD;
    if (byteAt(text, 0) < 0x80)
        return {byteAt(text, 0), 1};
    const size_t length = characterLength(text);
    if (length == 0)
        return {kUnknown, 1};
    constexpr uint8_t kLeadBits[] = {0, 0, 0x1F, 0x0F, 0x07};
    char32_t code = byteAt(text, 0) & kLeadBits[length];
    for (size_t i = 1; i < length; ++i)
        code = code << 6U | (byteAt(text, i) & 0x3FU);
    return {code, length};
}

std::string visibleText(std::string_view text)
{
    std::string seen;
    seen.reserve(text.size());
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const bool isBroken = character.bytes == 1 && byteAt(text, 0) >= 0x80;
        if (isBroken) {
            seen += kReplacement;
        } else if (isUnseen(character.code)) {
            char number[16];
            snprintf(number, sizeof number, "<U+%04X>", static_cast<unsigned>(character.code));
            seen += number;
        } else {
            seen += text.substr(0, character.bytes);
        }
        text.remove_prefix(character.bytes);
    }
    return seen;
}

std::string_view firstCharacters(std::string_view text, size_t characters)
{
    size_t end = 0;
    for (; end < text.size(); ++end) {
        const bool begins = (byteAt(text, end) & 0xC0) != 0x80;
        if (begins && characters-- == 0)
            break;
    }
    return text.substr(0, end);
}
} // namespace report
