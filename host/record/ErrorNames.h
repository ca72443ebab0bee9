#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host
{
/// The name of an errno value, "EACCES"; "EIO" for values that have none. Names mean the same on every architecture,
/// values do not.
std::string errorName(int error);

/// The value of such a name on this machine.
std::optional<int> errorNumber(std::string_view name);
} // namespace host
