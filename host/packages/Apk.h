#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "host/packages/Package.h"

// apk's database.

namespace host
{
/// The packages of a database (/lib/apk/db/installed); without what world tells.
void parseApkInstalled(std::string_view text, const TakePackage& take);

/// The names of packages that somebody asked for (/etc/apk/world), without versions and repositories. Views of the
/// text.
std::unordered_set<std::string_view> parseApkWorld(std::string_view text);
} // namespace host
