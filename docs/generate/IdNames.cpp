#include "docs/generate/IdNames.h"

#include <charconv>
#include <fstream>

namespace
{
constexpr std::string_view kEnum = "enum ";
constexpr std::string_view kHost = "Host";
constexpr std::string_view kAttrib = "Attrib";

// Enumerations are spelled by the house's style, elements by the catalog's names: "IpAddress" and "IPAddress".
std::string lower(std::string_view text)
{
    std::string result;
    for (const char c : text)
        result += static_cast<char>(c >= 'A' && c <= 'Z' ? c | 0x20 : c);
    return result;
}

// "enum HostMemoryAttrib : uint32_t {" -> "memory"; empty for an enumeration that is no group's.
std::string groupOf(std::string_view line)
{
    std::string_view name = line.substr(kEnum.size());
    name = name.substr(0, name.find(' '));
    if (!name.ends_with(kAttrib))
        return {};
    name.remove_suffix(kAttrib.size());
    if (name.starts_with(kHost))
        name.remove_prefix(kHost.size());
    return lower(name);
}
} // namespace

// Declarations are one a line: "    NAME = NUMBER,".
void IdNames::addLine(std::string_view line)
{
    if (line.starts_with(kEnum)) {
        group_ = groupOf(line);
        return;
    }
    const size_t begin = line.find_first_not_of(' ');
    const size_t equals = line.find(" = ");
    if (group_.empty() || begin == std::string_view::npos || equals == std::string_view::npos)
        return;
    const std::string_view number = line.substr(equals + 3);
    uint32_t id = 0;
    if (std::from_chars(number.data(), number.data() + number.size(), id).ec == std::errc())
        names_.emplace(std::pair(group_, id), line.substr(begin, equals - begin));
}

bool IdNames::read(const std::string& header)
{
    std::ifstream file(header);
    group_.clear();
    for (std::string line; std::getline(file, line);)
        addLine(line);
    return file.eof();
}

std::string_view IdNames::find(std::string_view group, uint32_t attribute) const
{
    const auto found = names_.find({lower(group), attribute});
    return found == names_.end() ? std::string_view() : found->second;
}
