// UNIX System Params: start, run level and name of the system.

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/TimeZone.h"
#include "host/system/SystemFiles.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// What systemd's targets are in run levels.
struct Target {
    std::string_view name;
    uint32_t level;
};
constexpr Target kTargets[] = {
    {"graphical.target", 5}, {"runlevel5.target", 5}, {"multi-user.target", 3}, {"runlevel3.target", 3},
    {"runlevel2.target", 2}, {"runlevel4.target", 4}, {"rescue.target", 1},     {"runlevel1.target", 1},
};

// Where systemd does not run, its default target tells nothing of the system.
void addRunLevel(const Root& root, RowBuilder& row)
{
    if (!root.exists("/run/systemd/system"))
        return;
    for (const char* path : {"/etc/systemd/system/default.target", "/usr/lib/systemd/system/default.target",
                             "/lib/systemd/system/default.target"}) {
        const std::optional<std::string> name = root.linkName(path);
        if (!name)
            continue;
        for (const Target& target : kTargets)
            if (target.name == *name)
                row.number(UNIX_SYSTEM_PARAMS_RUN_LEVEL, target.level, path);
        return;
    }
}

// "id:3:initdefault:" of the older init's table.
void addInittabLevel(const Root& root, RowBuilder& row)
{
    constexpr const char* kInittab = "/etc/inittab";
    const std::string text = root.read(kInittab).value_or("");
    std::string_view rest = text;
    std::string_view line;
    while (report::takeLine(rest, line)) {
        const std::vector<std::string_view> fields = report::split(report::trimmed(line), ':');
        if (fields.size() >= 3 && !fields[0].starts_with('#') && fields[2] == "initdefault")
            row.number(UNIX_SYSTEM_PARAMS_RUN_LEVEL, report::parseNumber(fields[1]), kInittab);
    }
}
} // namespace

void collectUnixSystemParams(const Machine& machine, Collection& collection)
{
    RowBuilder row(GROUP_UNIX_SYSTEM_PARAMS);
    if (const std::optional<int64_t> boot = bootTime(machine.root))
        row.dateTime(UNIX_SYSTEM_PARAMS_BOOT_TIME, machine.zone.local(*boot), kStatPath);
    addRunLevel(machine.root, row);
    if (!row.has(UNIX_SYSTEM_PARAMS_RUN_LEVEL))
        addInittabLevel(machine.root, row);
    const std::string node = machine.kernel.names().node;
    row.text(UNIX_SYSTEM_PARAMS_HOSTNAME, node, "uname");
    row.text(UNIX_SYSTEM_PARAMS_COMPUTER_ALIAS, node, "uname");
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
