#include "host/packages/Snap.h"

#include "report/Text.h"

namespace host
{
namespace
{
std::string_view unquoted(std::string_view value)
{
    const bool isQuoted =
        value.size() >= 2 && (value.front() == '\'' || value.front() == '"') && value.back() == value.front();
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

// "[amd64, arm64]" -> "amd64"; "- amd64" of a line of its own -> "amd64".
std::string_view firstOfList(std::string_view value)
{
    value = report::trimmed(value.substr(1));
    return unquoted(report::trimmed(value.substr(0, value.find_first_of(",]"))));
}
} // namespace

// Of the YAML only lines "key: value" without a blank before them matter, and the list below "architectures:".
std::optional<Package> parseSnapYaml(std::string_view text)
{
    Package package;
    std::string_view line;
    bool isInList = false;
    while (report::takeLine(text, line)) {
        const std::string_view trimmed = report::trimmed(line);
        if (isInList && trimmed.starts_with("- ") && package.architecture.empty())
            package.architecture = firstOfList(trimmed);
        if (line.starts_with(' ') || line.starts_with('-') || trimmed.empty())
            continue;
        const auto [key, value] = report::keyValue(line, ':');
        isInList = key == "architectures" && value.empty();
        if (key == "name")
            package.name = unquoted(value);
        else if (key == "version")
            package.version = unquoted(value);
        else if (key == "architectures" && value.starts_with('['))
            package.architecture = firstOfList(value);
    }
    return package.name.empty() || package.version.empty() ? std::nullopt : std::optional(package);
}
} // namespace host
