#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/Collection.h"
#include "host/Fact.h"

// Facts of the system that more than one group tells.

namespace host
{
/// When the kernel started, seconds since 1970 UTC (/proc/stat, "btime").
std::optional<int64_t> bootTime(const Root& root);
constexpr std::string_view kStatPath = "/proc/stat";

/// The machine's locale of a category ("LC_CTYPE"): LC_ALL, the category, LANG of /etc/locale.conf, else of
/// /etc/default/locale.
MaybeFact localeOf(const Root& root, const char* category);

/// /etc/machine-id, else the bus's copy of it.
MaybeFact machineId(const Root& root);

/// The number of a list of numbers and ranges ("0-3,8"), as /sys has it, at most 65536 of them; and the numbers
/// themselves, ascending, each once.
size_t countOfList(std::string_view list);
std::vector<uint32_t> numbersOfList(std::string_view list);
} // namespace host
