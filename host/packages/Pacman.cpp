#include "host/packages/Pacman.h"

#include "report/Text.h"

namespace host
{
namespace
{
void addField(std::string_view field, std::string_view value, Package& package)
{
    if (field == "%NAME%")
        package.name = value;
    else if (field == "%VERSION%")
        package.version = value;
    else if (field == "%ARCH%")
        package.architecture = value;
    else if (field == "%PACKAGER%")
        package.vendor = value;
    else if (field == "%GROUPS%")
        package.category = value;
    else if (field == "%BASE%")
        package.sourcePackage = value;
    else if (field == "%INSTALLDATE%")
        package.installDate = report::parseNumber<int64_t>(value);
    else if (field == "%REASON%")
        package.isAutomatic = value == "1";
    else if (field == "%SIZE%")
        if (const auto bytes = report::parseNumber(value))
            package.installedKB = kilobytes(*bytes);
}
} // namespace

// A line with the field's name, lines with its values, an empty line. Of several values the first one is taken.
std::optional<Package> parsePacmanDescription(std::string_view text)
{
    Package package;
    package.isAutomatic = false; // the reason is written of packages that others need
    std::string_view line, field;
    bool isNamed = false;
    while (report::takeLine(text, line)) {
        line = report::trimmed(line);
        if (isNamed)
            addField(field, line, package);
        isNamed = !isNamed && line.size() > 2 && line.starts_with('%') && line.ends_with('%');
        field = line;
    }
    return package.name.empty() || package.version.empty() ? std::nullopt : std::optional(package);
}
} // namespace host
