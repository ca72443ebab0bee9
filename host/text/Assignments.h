#pragma once

#include <map>
#include <string>
#include <string_view>

namespace host
{
/// Lines "NAME=value" of files that shells read (os-release(5), locale.conf(5)): comments left out, quotes around
/// values and backslashes before quoted characters removed. The last of several lines of a name counts.
std::map<std::string, std::string, std::less<>> parseAssignments(std::string_view text);
} // namespace host
