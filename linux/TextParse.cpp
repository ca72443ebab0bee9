#include "linux/TextParse.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>

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

void dropTrailingControl(char* line)
{
    const size_t length = strlen(line);
    if (length > 0 && iscntrl(static_cast<unsigned char>(line[length - 1])))
        line[length - 1] = '\0';
}
