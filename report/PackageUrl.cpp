#include "report/PackageUrl.h"

#include <cstdio>
#include <iterator>

#include "report/Text.h"
#include "report/catalog/AttributeIds.h"
#include "report/summary/Sections.h"

namespace report
{
namespace
{
using summary::textOf;

// How the scheme treats the packages of a manager: its type, whether the distribution is their namespace, and whether
// their names are of lower case there.
struct PackageType {
    const char* manager;
    const char* type;
    bool hasNamespace;
    bool isLower;
};
constexpr PackageType kTypes[] = {
    {"dpkg", "deb", true, true},
    {"rpm", "rpm", true, false},
    {"apk", "apk", true, true},
    {"pacman", "alpm", true, true},
};
constexpr PackageType kGeneric = {"", "generic", false, false};

const PackageType& typeOf(std::string_view manager)
{
    for (const PackageType& type : kTypes)
        if (manager == type.manager)
            return type;
    return kGeneric;
}

// The epoch that a version of rpm begins with ("1:2.3"), which the scheme has as a qualifier; cut from the version.
std::string takeEpoch(std::string& version)
{
    const size_t colon = version.find(':');
    if (colon == std::string::npos || !parseNumber(std::string_view(version).substr(0, colon)))
        return {};
    std::string epoch = version.substr(0, colon);
    version.erase(0, colon + 1);
    return epoch;
}

// Adds a qualifier that has a value; their names come in alphabetical order.
void addQualifier(std::string& url, const char* name, const std::string& value)
{
    if (value.empty())
        return;
    url += url.find('?') == std::string::npos ? '?' : '&';
    url += std::string(name) + '=' + percentEncoded(value);
}
} // namespace

std::string percentEncoded(std::string_view text)
{
    std::string encoded;
    for (const char c : text) {
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                             std::string_view(".-_~:").find(c) != std::string_view::npos;
        char code[8];
        snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        encoded += isPlain ? std::string(1, c) : std::string(code);
    }
    return encoded;
}

std::string packageVersion(const Row& row)
{
    const std::string version = textOf(row, SOFTWARE_PACKAGES_VERSION);
    const std::string revision = textOf(row, SOFTWARE_PACKAGES_REVISION);
    return version.empty() || revision.empty() ? version : version + '-' + revision;
}

std::string packageUrl(const Row& row, const Distribution& distribution)
{
    const PackageType& type = typeOf(textOf(row, SOFTWARE_PACKAGES_MANAGER));
    const std::string name = textOf(row, SOFTWARE_PACKAGES_NAME);
    if (name.empty())
        return {};
    std::string version = packageVersion(row);
    const std::string epoch = std::string_view(type.type) == "rpm" ? takeEpoch(version) : "";
    std::string url = std::string("pkg:") + type.type + '/';
    if (type.hasNamespace && !distribution.id.empty())
        url += percentEncoded(lower(distribution.id)) + '/';
    url += percentEncoded(type.isLower ? lower(name) : name);
    if (!version.empty())
        url += '@' + percentEncoded(version);
    addQualifier(url, "arch", textOf(row, SOFTWARE_PACKAGES_ARCHITECTURE));
    if (type.hasNamespace && !distribution.id.empty() && !distribution.version.empty())
        addQualifier(url, "distro", distribution.id + '-' + distribution.version);
    addQualifier(url, "epoch", epoch);
    return url;
}
} // namespace report
