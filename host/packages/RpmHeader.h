#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/packages/Package.h"

namespace host
{
/// A package as RPM's database keeps it, without the header that it was read from, which may be large.
struct RpmPackage {
    std::string name;
    std::string version; // "1:2.3": the epoch, where there is one, stands before it
    std::string release, architecture, vendor, group, sourcePackage;
    std::optional<uint64_t> installedKB;
    std::optional<int64_t> installDate;

    /// Views of this.
    Package package() const;
};

/// Reads the header of an installed package (rpm's file format, "header structure", without the bytes before it that
/// only files have): a count of entries and of data bytes, the entries, the data. Absent when the sizes do not fit the
/// bytes, or it has no name or version. A header that names no architecture is of a key, not of a program.
std::optional<RpmPackage> parseRpmHeader(std::string_view bytes);
} // namespace host
