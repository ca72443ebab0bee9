#include "host/packages/Dpkg.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "host/packages/ControlText.h"
#include "report/Text.h"

namespace host
{
namespace
{
// The place of a field's value among those that are read.
enum StatusField { Name, Status, Version, Architecture, Maintainer, Section, InstalledSize, Source, MultiArch };
constexpr std::string_view kStatusFields[] = {"Package", "Status",         "Version", "Architecture", "Maintainer",
                                              "Section", "Installed-Size", "Source",  "Multi-Arch"};

enum ExtendedField { ExtendedName, ExtendedArchitecture, AutoInstalled };
constexpr std::string_view kExtendedFields[] = {"Package", "Architecture", "Auto-Installed"};

// "install ok installed": what is wanted, whether anything is wrong, what is so. Packages that wait for another's
// trigger are whole.
bool isInstalled(std::string_view status)
{
    constexpr std::array<std::string_view, 3> kWhole{"installed", "triggers-awaited", "triggers-pending"};
    const std::string_view state = status.substr(status.rfind(' ') + 1);
    return std::find(kWhole.begin(), kWhole.end(), state) != kWhole.end();
}

// "glibc (2.36-9)" -> "glibc"; a package that names no source is built from one of its own name.
std::string_view sourceName(std::string_view source, std::string_view package)
{
    const std::string_view name = source.substr(0, source.find(' '));
    return name.empty() ? package : name;
}

DpkgPackage packageOf(Values values)
{
    const VersionParts version = versionParts(values[Version]);
    DpkgPackage package;
    package.name = values[Name];
    package.version = version.version;
    package.revision = version.revision;
    package.architecture = values[Architecture];
    package.vendor = values[Maintainer];
    package.category = values[Section];
    package.sourcePackage = sourceName(values[Source], values[Name]);
    package.installedKB = report::parseNumber(values[InstalledSize]);
    package.isMultiarch = values[MultiArch] == "same";
    return package;
}
} // namespace

void parseDpkgStatus(std::string_view text, const std::function<void(const DpkgPackage& package)>& take)
{
    readControlText(text, kStatusFields, [&take](Values values) {
        if (!values[Name].empty() && !values[Version].empty() && isInstalled(values[Status]))
            take(packageOf(values));
    });
}

bool AptStates::isBefore(const Name& left, const Name& right)
{
    return std::tie(left.name, left.architecture) < std::tie(right.name, right.architecture);
}

AptStates::AptStates(std::string_view text)
{
    readControlText(text, kExtendedFields, [this](Values values) {
        if (values[AutoInstalled] == "1")
            automatic_.push_back({values[ExtendedName], values[ExtendedArchitecture]});
    });
    std::sort(automatic_.begin(), automatic_.end(), isBefore);
}

bool AptStates::isAutomatic(const Package& package) const
{
    const bool isForAll = package.architecture == "all";
    const Name wanted{package.name, isForAll ? std::string_view() : package.architecture};
    const auto found = std::lower_bound(automatic_.begin(), automatic_.end(), wanted, isBefore);
    return found != automatic_.end() && found->name == package.name &&
           (isForAll || found->architecture == package.architecture);
}
} // namespace host
