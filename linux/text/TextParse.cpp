#include "linux/text/TextParse.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>

namespace
{

// White space of the C locale, whatever the locale of the process.
bool isWhite(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

int32_t parseLong(const char* text)
{
    return static_cast<int32_t>(std::clamp<long long>(strtoll(text, nullptr, 10), INT32_MIN, INT32_MAX));
}

uint32_t parseULong(const char* text, int base)
{
    while (isspace(static_cast<unsigned char>(*text)))
        ++text;
    const bool negative = *text == '-';
    if (negative || *text == '+')
        ++text;
    if (!isxdigit(static_cast<unsigned char>(*text)))
        return 0; // a second sign or a blank behind the sign is no number
    const unsigned long long magnitude = strtoull(text, nullptr, base);
    if (magnitude > UINT32_MAX)
        return UINT32_MAX;
    return negative ? 0 - static_cast<uint32_t>(magnitude) : static_cast<uint32_t>(magnitude);
}

bool readULong(const char** text, uint32_t* number, int base)
{
    char* end = nullptr;
    strtoull(*text, &end, base);
    if (end == *text)
        return false;
    *number = parseULong(*text, base);
    *text = end;
    return true;
}

bool contains(const char* text, const char* part)
{
    return strstr(text, part) != nullptr;
}

void dropTrailingControl(char* line)
{
    const size_t length = strlen(line);
    if (length > 0 && iscntrl(static_cast<unsigned char>(line[length - 1])))
        line[length - 1] = '\0';
}

void trim2(char* text)
{
    const char* start = text;
    while (isWhite(*start))
        ++start;
    size_t length = strlen(start);
    memmove(text, start, length + 1);
    while (length > 0 && isWhite(text[length - 1]))
        text[--length] = '\0';
}
