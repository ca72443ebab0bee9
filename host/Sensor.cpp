// Sensor: a row an input of the kernel's hardware monitors: temperatures, fans, voltages, currents, power, energy,
// humidity.

#include <set>

#include "host/Collectors.h"
#include "host/Root.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kMonitors = "/sys/class/hwmon/";
constexpr std::string_view kInput = "_input";

// What an input's name begins with, and its scale: the kernel counts in fractions of the unit (hwmon's sysfs
// interface).
struct SensorKind {
    std::string_view prefix;
    const char* kind;
    const char* unit;
    double fraction;
};
constexpr SensorKind kKinds[] = {
    {"temp", "Temperature", "°C", 1e3}, {"fan", "Fan", "RPM", 1},     {"in", "Voltage", "V", 1e3},
    {"curr", "Current", "A", 1e3},      {"power", "Power", "W", 1e6}, {"energy", "Energy", "J", 1e6},
    {"humidity", "Humidity", "%", 1e3},
};

// "temp1_input" -> the temperatures' row; null for every other file.
const SensorKind* kindOf(std::string_view file)
{
    if (!file.ends_with(kInput))
        return nullptr;
    const std::string_view name = file.substr(0, file.size() - kInput.size());
    const size_t digits = name.find_first_of("0123456789");
    if (digits == std::string_view::npos || !report::parseNumber(name.substr(digits)))
        return nullptr;
    for (const SensorKind& kind : kKinds)
        if (kind.prefix == name.substr(0, digits))
            return &kind;
    return nullptr;
}

// One monitor: its chip, where that sits, and the folder of its inputs.
struct Monitor {
    MaybeFact chip;
    std::string bus;
    std::string link; // the source of bus
    std::string folder;
};

// Drivers of old kernels left inputs and name in the device's own folder.
Monitor openMonitor(const Root& root, const std::string& name)
{
    const std::string folder = kMonitors + name;
    Monitor monitor{root.fact(folder + "/name"), "", folder + "/device", folder + '/'};
    monitor.bus = root.linkName(monitor.link).value_or("");
    if (!monitor.chip) {
        monitor.folder = monitor.link + '/';
        monitor.chip = root.fact(monitor.folder + "name");
    }
    return monitor;
}

std::optional<double> valueOf(const Root& root, const std::string& path, const SensorKind& kind)
{
    const std::optional<std::string> line = root.line(path);
    const std::optional<int64_t> count = line ? report::parseNumber<int64_t>(*line) : std::nullopt;
    return count ? std::optional(static_cast<double>(*count) / kind.fraction) : std::nullopt;
}

// The label that the driver gives, else the input's own name; of inputs with one label, each but the first has its own
// name behind it.
Fact nameOf(const Root& root, const Monitor& monitor, const std::string& input, std::set<std::string>& taken)
{
    Fact name = root.fact(monitor.folder + input + "_label").value_or(Fact{input, monitor.folder});
    if (!taken.insert(name.value).second)
        name.value.append(" (").append(input).append(")");
    return name;
}

void addSensors(const Root& root, const Monitor& monitor, Collection& collection)
{
    std::set<std::string> taken;
    for (const std::string& file : root.list(monitor.folder)) {
        const SensorKind* kind = kindOf(file);
        if (kind == nullptr)
            continue;
        RowBuilder row(GROUP_SENSOR);
        row.text(SENSOR_CHIP, monitor.chip);
        row.text(SENSOR_BUS_ADDRESS, monitor.bus, monitor.link);
        row.text(SENSOR_NAME, nameOf(root, monitor, file.substr(0, file.size() - kInput.size()), taken));
        const std::string path = monitor.folder + file;
        row.text(SENSOR_KIND, kind->kind, path);
        row.real(SENSOR_VALUE, valueOf(root, path, *kind), path);
        row.text(SENSOR_UNIT, kind->unit, path);
        collection.add(std::move(row));
    }
}
} // namespace

void collectSensor(const Machine& machine, Collection& collection)
{
    for (const std::string& name : machine.root.list(kMonitors))
        addSensors(machine.root, openMonitor(machine.root, name), collection);
}
} // namespace host
