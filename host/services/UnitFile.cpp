#include "host/services/UnitFile.h"

#include <algorithm>

#include "report/Text.h"

namespace host
{
namespace
{
constexpr size_t kMostLine = 65536; // of one assignment; longer ones are cut

bool isComment(std::string_view line)
{
    return line.starts_with('#') || line.starts_with(';');
}

// Takes an assignment with all the lines that it goes on in; comments between them belong to nobody.
bool takeAssignment(std::string_view& text, std::string& whole)
{
    std::string_view line;
    whole.clear();
    bool goesOn = false;
    while (report::takeLine(text, line)) {
        line = report::trimmed(line);
        if (isComment(line))
            continue;
        goesOn = line.ends_with('\\');
        line.remove_suffix(goesOn ? 1 : 0);
        if (whole.size() < kMostLine)
            whole.append(line.substr(0, kMostLine)) += goesOn ? " " : "";
        if (!goesOn)
            return true;
    }
    return goesOn;
}

// "-/usr/bin/a b" -> "/usr/bin/a b". Behind "@" the second word is the name that the program is given.
std::string withoutMarks(std::string_view command)
{
    const size_t begin = std::min(command.find_first_not_of("@-:+!|"), command.size());
    const bool hasName = command.substr(0, begin).find('@') != std::string_view::npos;
    const std::string_view plain = report::trimmed(command.substr(begin));
    const size_t end = plain.find_first_of(" \t");
    if (!hasName || end == std::string_view::npos)
        return std::string(plain);
    const std::string_view rest = report::trimmed(plain.substr(end));
    const size_t name = std::min(rest.find_first_of(" \t"), rest.size());
    return std::string(plain.substr(0, end)).append(rest.substr(name));
}

void assignService(std::string_view key, std::string_view value, UnitFile& unit)
{
    if (key == "Type")
        unit.type = value;
    else if (key == "User")
        unit.user = value;
    else if (key == "BusName")
        unit.hasBusName = !value.empty();
    else if (key == "ExecStart" && value.empty())
        unit.execStart.clear(); // what follows takes the place of all before
    else if (key == "ExecStart" && unit.execStart.empty())
        unit.execStart = withoutMarks(value);
}

void assign(std::string_view section, std::string_view key, std::string_view value, UnitFile& unit)
{
    unit.isAnything = true;
    if (section == "[Unit]" && key == "Description")
        unit.description = value;
    else if (section == "[Service]")
        assignService(key, value, unit);
    else if (section == "[Install]" && key == "Also")
        unit.hasOthers = unit.hasOthers || !value.empty();
    else if (section == "[Install]" &&
             (key == "WantedBy" || key == "RequiredBy" || key == "UpheldBy" || key == "Alias"))
        unit.isWanted = unit.isWanted || !value.empty();
}
} // namespace

std::string UnitFile::effectiveType() const
{
    if (!type.empty())
        return type;
    return hasBusName ? "dbus" : execStart.empty() ? "oneshot" : "simple";
}

void parseUnitFile(std::string_view text, UnitFile& unit)
{
    std::string section, whole;
    while (takeAssignment(text, whole)) {
        const std::string_view line = report::trimmed(whole);
        const auto [key, value] = report::keyValue(line, '=');
        if (line.starts_with('['))
            section = line;
        else if (!key.empty())
            assign(section, key, value, unit);
    }
}
} // namespace host
