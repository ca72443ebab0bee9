// Service Info: a row a service. Where systemd runs it is asked for what it has loaded; the rest, and all of a copy
// that it does not answer for, comes from the unit files and the links between them. Machines without systemd have
// scripts.

#include <map>
#include <set>

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/services/InitScripts.h"
#include "host/services/UnitFolders.h"
#include "host/text/Secrets.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kBus = "org.freedesktop.systemd1";
constexpr const char* kRunning = "/run/systemd/system";

bool hasSystemd(const Root& root)
{
    return root.exists(kRunning) || root.exists("/usr/lib/systemd/systemd") || root.exists("/lib/systemd/systemd");
}

// "enabled-runtime" -> "enabled": how long it stays so is the file's state alone.
std::string startMode(const std::string& state)
{
    constexpr std::string_view kRuntime = "-runtime";
    return state.ends_with(kRuntime) ? state.substr(0, state.size() - kRuntime.size()) : state;
}

bool isStarted(const std::string& activeState)
{
    return activeState == "active" || activeState == "reloading" || activeState == "refreshing";
}

RowBuilder serviceRow(const Service& service, std::string_view source)
{
    RowBuilder row(GROUP_SERVICE_INFO);
    row.text(SERVICE_INFO_SERVICE_NAME, service.name, source);
    row.text(SERVICE_INFO_DISPLAY_NAME, service.description, source);
    row.text(SERVICE_INFO_DESCRIPTION, service.description, source);
    row.text(SERVICE_INFO_PATH_NAME, maskCommandLine(service.commandLine), source);
    row.text(SERVICE_INFO_SERVICE_TYPE, service.type, source);
    if (!service.activeState.empty())
        row.text(SERVICE_INFO_STARTED, isStarted(service.activeState) ? "Yes" : "No", source);
    row.text(SERVICE_INFO_START_MODE, startMode(service.unitFileState), source);
    if (!service.type.empty())
        row.text(SERVICE_INFO_START_NAME, service.user.empty() ? "root" : service.user, source);
    row.text(SERVICE_INFO_STATE, service.activeState, source);
    row.text(SERVICE_INFO_STATUS, service.subState, source);
    row.text(SERVICE_INFO_UNIT_FILE_STATE, service.unitFileState, source);
    return row;
}

// What is masked is nothing but a name.
RowBuilder fileRow(const std::string& name, const FoundUnit& unit, bool isManagerAsked)
{
    Service service;
    service.name = name;
    service.description = unit.file.description;
    service.unitFileState = unit.state;
    service.commandLine = unit.file.execStart;
    service.user = unit.file.user;
    if (!unit.state.starts_with("masked"))
        service.type = unit.file.effectiveType();
    if (isManagerAsked) { // what the manager has not loaded does not run
        service.activeState = "inactive";
        service.subState = "dead";
    }
    return serviceRow(service, unit.path);
}

void addUnits(const Machine& machine, Collection& collection)
{
    const auto loaded = machine.root.exists(kRunning) ? machine.kernel.services() : std::nullopt;
    const UnitFolders folders(machine.root);
    std::map<std::string, RowBuilder> rows;
    std::set<std::string> isLoaded;
    for (const Service& service : loaded ? *loaded : std::vector<Service>()) {
        rows.emplace(service.name, serviceRow(service, kBus));
        isLoaded.insert(service.name);
    }
    for (const auto& [name, unit] : folders.services())
        if (!isLoaded.contains(name))
            rows.emplace(name, fileRow(name, unit, loaded.has_value()));
    for (auto& [name, row] : rows)
        collection.add(std::move(row));
}

void addScripts(const Machine& machine, Collection& collection)
{
    for (const auto& [name, script] : readInitScripts(machine.root)) {
        const std::string path = "/etc/init.d/" + name;
        const std::string& summary = script.summary.empty() ? script.description : script.summary;
        RowBuilder row(GROUP_SERVICE_INFO);
        row.text(SERVICE_INFO_SERVICE_NAME, name, path);
        row.text(SERVICE_INFO_DISPLAY_NAME, summary, path);
        row.text(SERVICE_INFO_DESCRIPTION, script.description.empty() ? summary : script.description, path);
        row.text(SERVICE_INFO_PATH_NAME, path, path);
        row.text(SERVICE_INFO_START_MODE, script.isEnabled ? "enabled" : "disabled", path);
        collection.add(std::move(row));
    }
}
} // namespace

void collectServiceInfo(const Machine& machine, Collection& collection)
{
    const RowsTogether together(collection);
    if (hasSystemd(machine.root))
        addUnits(machine, collection);
    else
        addScripts(machine, collection);
}
} // namespace host
