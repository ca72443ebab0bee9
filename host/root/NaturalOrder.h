#pragma once

#include <string_view>

namespace host
{
/// True when a name stands before another one in natural order: runs of digits compare as numbers of any length
/// ("sda2" before "sda10"), everything else by bytes. Different names are never equal ("sda02" stands behind "sda2").
bool naturallyBefore(std::string_view left, std::string_view right);
} // namespace host
