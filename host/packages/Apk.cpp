#include "host/packages/Apk.h"

#include "report/Text.h"

namespace host
{
namespace
{
// One line of a package, "X:value" with a letter for the field; those of its files have letters of their own.
void addField(char letter, std::string_view value, Package& package)
{
    switch (letter) {
    case 'P':
        package.name = value;
        break;
    case 'V':
        package.version = value;
        break;
    case 'A':
        package.architecture = value;
        break;
    case 'm':
        package.vendor = value;
        break;
    case 'o':
        package.sourcePackage = value;
        break;
    case 'I':
        if (const auto bytes = report::parseNumber(value))
            package.installedKB = kilobytes(*bytes);
        break;
    default:
        break;
    }
}

void end(Package& package, const TakePackage& take)
{
    if (!package.name.empty() && !package.version.empty())
        take(package);
    package = {};
}
} // namespace

void parseApkInstalled(std::string_view text, const TakePackage& take)
{
    Package package;
    std::string_view line;
    while (report::takeLine(text, line)) {
        if (report::trimmed(line).empty())
            end(package, take);
        else if (line.size() > 2 && line[1] == ':')
            addField(line[0], report::trimmed(line.substr(2)), package);
    }
    end(package, take);
}

std::unordered_set<std::string_view> parseApkWorld(std::string_view text)
{
    std::unordered_set<std::string_view> names;
    std::string_view line;
    while (report::takeLine(text, line))
        for (const std::string_view word : report::words(line))
            if (const std::string_view name = word.substr(0, word.find_first_of("<>=~@")); !name.empty())
                names.insert(name);
    return names;
}
} // namespace host
