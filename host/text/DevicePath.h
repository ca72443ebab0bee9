#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host
{
/// The devices above a path of /sys, itself first, up to /sys/devices.
std::vector<std::string> ancestorsOf(std::string_view path);
} // namespace host
