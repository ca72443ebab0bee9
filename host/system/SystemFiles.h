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
} // namespace host
