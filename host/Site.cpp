// Site: what the operator knows of the machine and no file of the system tells: lines "name = value".

#include <set>

#include "host/Collectors.h"
#include "host/Root.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// Adds the lines of one file; "#" begins a comment, a name that an earlier line gave is noted and left out.
void addFile(const std::string& path, std::string_view text, std::set<std::string>& names, Collection& collection)
{
    std::string_view line;
    for (size_t number = 1; report::takeLine(text, line); ++number) {
        const std::string_view trimmed = report::trimmed(line);
        if (trimmed.empty() || trimmed.starts_with('#'))
            continue;
        const auto [name, value] = report::keyValue(trimmed, '=');
        const std::string place = path + ':' + std::to_string(number) + ": ";
        if (name.empty())
            collection.notes().note(place + "expected \"name = value\"");
        else if (!names.emplace(name).second)
            collection.notes().note(place + "\"" + std::string(name) + "\" comes again");
        else
            collection.add(std::move(RowBuilder(GROUP_SITE).text(SITE_NAME, name, path).text(SITE_VALUE, value, path)));
    }
}
} // namespace

void collectSite(const Machine& machine, Collection& collection)
{
    constexpr const char* kFolder = "/etc/invhw/site.d";
    std::set<std::string> names;
    for (const std::string& name : machine.root.list(kFolder)) {
        const std::string path = std::string(kFolder) + '/' + name;
        if (name.ends_with(".conf"))
            addFile(path, machine.root.read(path).value_or(""), names, collection);
    }
}
} // namespace host
