#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

// What the databases of package managers say, each read by the file of its manager in this folder.

namespace host
{
/// An installed package. Texts are empty where the database says nothing, and live as long as what they were read from.
struct Package {
    std::string_view name, version, revision, architecture;
    std::string_view vendor, category, sourcePackage;
    std::optional<uint64_t> installedKB;
    std::optional<int64_t> installDate; // seconds since 1970 UTC
    std::optional<bool> isAutomatic;    // installed because another package needs it
};

/// Called for every installed package, in the database's order.
using TakePackage = std::function<void(const Package& package)>;

/// Bytes in kilobytes, a begun one whole.
constexpr uint64_t kilobytes(uint64_t bytes)
{
    return bytes / 1024 + (bytes % 1024 != 0 ? 1 : 0);
}

/// Cuts a revision, what follows the last "-", off a version ("1:2.3-4" -> "1:2.3", "4"); one that would leave no
/// version is none.
struct VersionParts {
    std::string_view version, revision;
};
constexpr VersionParts versionParts(std::string_view whole)
{
    const size_t dash = whole.rfind('-');
    if (dash == std::string_view::npos || dash == 0)
        return {whole, {}};
    return {whole.substr(0, dash), whole.substr(dash + 1)};
}
} // namespace host
