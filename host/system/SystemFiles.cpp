#include "host/system/SystemFiles.h"

#include "host/Root.h"
#include "host/text/Assignments.h"
#include "report/Text.h"

namespace host
{
std::optional<int64_t> bootTime(const Root& root)
{
    const std::string text = root.read(kStatPath).value_or("");
    std::string_view rest = text;
    std::string_view line;
    while (report::takeLine(rest, line)) {
        const std::vector<std::string_view> words = report::words(line);
        if (words.size() == 2 && words[0] == "btime")
            return report::parseNumber<int64_t>(words[1]);
    }
    return std::nullopt;
}

MaybeFact localeOf(const Root& root, const char* category)
{
    for (const char* path : {"/etc/locale.conf", "/etc/default/locale"}) {
        const auto values = parseAssignments(root.read(path).value_or(""));
        for (const std::string_view name :
             {std::string_view("LC_ALL"), std::string_view(category), std::string_view("LANG")}) {
            const auto found = values.find(name);
            if (found != values.end() && !found->second.empty())
                return Fact{found->second, path};
        }
    }
    return std::nullopt;
}

MaybeFact machineId(const Root& root)
{
    const MaybeFact fact = root.fact("/etc/machine-id");
    return fact ? fact : root.fact("/var/lib/dbus/machine-id");
}
} // namespace host
