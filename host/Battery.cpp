// Battery: a row a battery that the kernel's power supplies show, those of mice and other devices too.

#include "host/Collectors.h"
#include "host/Root.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kSupplies = "/sys/class/power_supply/";

// A number of a battery's folder, and the file.
struct Reading {
    std::optional<uint64_t> value;
    std::string source;
};

Reading read(const Root& root, const std::string& folder, const char* name)
{
    return {root.number(folder + name), folder + name};
}

// Millwatt-hours of a capacity: the driver counts energy in uWh, or charge in uAh, which the design's voltage (uV)
// turns into energy.
Reading capacity(const Root& root, const std::string& folder, const char* energyName, const char* chargeName)
{
    constexpr uint64_t kMicroInMilli = 1000, kPicoInMilli = 1'000'000'000;
    Reading energy = read(root, folder, energyName);
    if (energy.value) {
        *energy.value /= kMicroInMilli;
        return energy;
    }
    Reading charge = read(root, folder, chargeName);
    const std::optional<uint64_t> voltage = root.number(folder + "voltage_min_design");
    uint64_t product = 0;
    if (!charge.value || !voltage || __builtin_mul_overflow(*charge.value, *voltage, &product))
        return {};
    charge.value = product / kPicoInMilli;
    return charge;
}

void addText(const Root& root, const std::string& folder, const char* name, uint32_t attribute, RowBuilder& row)
{
    row.text(attribute, root.fact(folder + name));
}

RowBuilder batteryRow(const Root& root, const std::string& name, const std::string& folder)
{
    RowBuilder row(GROUP_BATTERY);
    row.text(BATTERY_NAME, name, kSupplies);
    addText(root, folder, "manufacturer", BATTERY_MANUFACTURER, row);
    addText(root, folder, "model_name", BATTERY_MODEL, row);
    addText(root, folder, "serial_number", BATTERY_SERIAL_NUMBER, row);
    addText(root, folder, "technology", BATTERY_TECHNOLOGY, row);
    const Reading design = capacity(root, folder, "energy_full_design", "charge_full_design");
    row.number(BATTERY_DESIGN_CAPACITY, design.value, design.source);
    const Reading full = capacity(root, folder, "energy_full", "charge_full");
    row.number(BATTERY_FULL_CAPACITY, full.value, full.source);
    const Reading cycles = read(root, folder, "cycle_count");
    row.number(BATTERY_CYCLE_COUNT, cycles.value, cycles.source);
    addText(root, folder, "status", BATTERY_STATUS, row);
    return row;
}
} // namespace

void collectBattery(const Machine& machine, Collection& collection)
{
    for (const std::string& name : machine.root.list(kSupplies)) {
        const std::string folder = kSupplies + name + '/';
        if (machine.root.line(folder + "type") == "Battery")
            collection.add(batteryRow(machine.root, name, folder));
    }
}
} // namespace host
