#include "host/services/InitScripts.h"

#include <algorithm>
#include <set>

#include "host/Root.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr size_t kMostScripts = 10'000;
constexpr size_t kMostHeading = 16384; // of a script

// "# Short-Description: text" -> the text, when it has this name; chkconfig's is in lower case.
bool takeComment(std::string_view line, std::string_view name, std::string& value)
{
    const auto [key, text] = report::keyValue(report::trimmed(line.substr(std::min<size_t>(1, line.size()))), ':');
    if (key != name)
        return false;
    value = text;
    return true;
}

// The value of a shell's assignment of plain text: description="text".
void takeAssignment(std::string_view line, std::string_view name, std::string& value)
{
    const auto [key, text] = report::keyValue(line, '=');
    if (key == name && text.size() >= 2 && text.front() == '"' && text.back() == '"')
        value = text.substr(1, text.size() - 2);
}

// "S20ssh" -> "ssh"; empty for anything else.
std::string startedBy(const std::string& link)
{
    constexpr size_t kPrefix = 3;
    const bool isStart =
        link.size() > kPrefix && link[0] == 'S' && link[1] >= '0' && link[1] <= '9' && link[2] >= '0' && link[2] <= '9';
    return isStart ? link.substr(kPrefix) : "";
}

std::set<std::string> startedScripts(const Root& root)
{
    std::set<std::string> started;
    for (const char level : {'2', '3', '4', '5'})
        for (const char* folder : {"/etc/rc", "/etc/rc.d/rc", "/etc/init.d/rc"})
            for (const std::string& link : root.list(std::string(folder) + level + ".d"))
                started.insert(startedBy(link));
    for (const std::string& level : root.list("/etc/runlevels"))
        for (const std::string& link : root.list("/etc/runlevels/" + level))
            started.insert(link);
    started.erase("");
    return started;
}
} // namespace

InitScript parseInitScript(std::string_view text)
{
    InitScript script;
    const bool isOpenRc = text.starts_with("#!/sbin/openrc-run") || text.starts_with("#!/sbin/runscript");
    script.isService = isOpenRc;
    std::string provides, levels, older;
    std::string_view line;
    while (report::takeLine(text, line)) {
        if (line.starts_with('#')) {
            takeComment(line, "Short-Description", script.summary);
            takeComment(line, "Description", script.description);
            takeComment(line, "description", older);
            if (takeComment(line, "Provides", provides) || takeComment(line, "chkconfig", levels))
                script.isService = true;
        } else if (isOpenRc) {
            takeAssignment(line, "description", older);
        }
    }
    if (script.description.empty())
        script.description = older;
    return script;
}

std::map<std::string, InitScript> readInitScripts(const Root& root)
{
    constexpr const char* kFolder = "/etc/init.d/";
    const std::set<std::string> started = startedScripts(root);
    std::map<std::string, InitScript> scripts;
    for (const std::string& name : root.list(kFolder)) {
        InitScript script = parseInitScript(root.read(kFolder + name, kMostHeading).value_or(""));
        script.isEnabled = started.count(name) != 0;
        if ((script.isService || script.isEnabled) && scripts.size() < kMostScripts)
            scripts.emplace(name, std::move(script));
    }
    return scripts;
}
} // namespace host
