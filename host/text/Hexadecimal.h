#pragma once

#include <cstdint>
#include <string>

namespace host
{
/// "0x3F8", as addresses of ports are written.
std::string hexadecimal(uint64_t number);
} // namespace host
