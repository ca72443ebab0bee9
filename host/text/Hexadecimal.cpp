#include "host/text/Hexadecimal.h"

#include <cinttypes>
#include <cstdio>

namespace host
{
std::string hexadecimal(uint64_t number)
{
    char text[19];
    snprintf(text, sizeof text, "0x%" PRIX64, number);
    return text;
}
} // namespace host
