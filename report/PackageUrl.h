#pragma once

#include <string>
#include <string_view>

#include "report/Report.h"

namespace report
{
/// The distribution whose packages a report has, as its system names itself; empty where it does not.
struct Distribution {
    std::string id;      // "debian"
    std::string version; // "12"
};

/// The package URL (purl) of a row of Software Packages: "pkg:deb/debian/curl@7.88.1-10?arch=amd64&distro=debian-12".
/// Types that the scheme has no name for are generic. Empty when the row has no name.
std::string packageUrl(const Row& row, const Distribution& distribution);

/// The text with every byte as %XX but letters, digits and ".-_~:", which a package URL takes as they are.
std::string percentEncoded(std::string_view text);

/// Version and revision of a row of Software Packages as its manager writes them together.
std::string packageVersion(const Row& row);
} // namespace report
