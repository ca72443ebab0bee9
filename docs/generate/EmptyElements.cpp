#include "docs/generate/AttribSources.h"
#include "docs/generate/Documents.h"

#include <cstring>
#include <fstream>
#include <iostream>

#include "com/VexCatalog.h"

namespace
{
// The name of the element that begins with this line; empty for any other line.
std::string_view startedElement(std::string_view line)
{
    const size_t start = line.find_first_not_of('\t');
    if (start == std::string_view::npos || line[start] != '<' || line.find('>') == std::string_view::npos)
        return {};
    line.remove_prefix(start + 1);
    return line.substr(0, line.find_first_of(" >"));
}

bool isEmptyElement(std::string_view line)
{
    return line.substr(line.find('>') + 1).starts_with("</");
}

const vexGroupDef* findGroup(std::string_view element)
{
    const vexGroupDef* group = GROUPS_DEF;
    while (group->id != VEX_END && elementName(group->name) != element)
        ++group;
    return group->id == VEX_END ? nullptr : group;
}

bool mayBeEmpty(const vexGroupDef& group, std::string_view element)
{
    for (const vexAttribDef* attrib = group.attributes; attrib->id != VEX_END; ++attrib)
        if (elementName(attrib->name) == element) {
            const char* const source = attribSource(group.id, attrib->id);
            return source != nullptr && strstr(source, "empty") != nullptr;
        }
    return false;
}
} // namespace

bool emptyElementsAreTold(const char* report)
{
    std::ifstream file(report, std::ios::binary);
    const vexGroupDef* group = nullptr;
    bool hasGroups = false;
    bool told = true;
    for (std::string line; std::getline(file, line);) {
        const std::string_view element = startedElement(line);
        if (line.find("version=\"") != std::string::npos) {
            group = findGroup(element);
            hasGroups = true;
        } else if (group != nullptr && !element.empty() && isEmptyElement(line) && !mayBeEmpty(*group, element)) {
            std::cout << report << ": " << group->name << ": " << element
                      << " is empty, which its source does not say\n";
            told = false;
        }
    }
    if (!hasGroups)
        std::cout << report << ": no report\n";
    return hasGroups && told;
}
