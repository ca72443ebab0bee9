#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    text(BATTERY_NAME, "Name", 64, PLAIN, "name of the folder in `/sys/class/power_supply`"),
    text(BATTERY_MANUFACTURER, "Manufacturer", 128, PLAIN, "`/sys/class/power_supply/*/manufacturer`"),
    text(BATTERY_MODEL, "Model", 128, PLAIN, "`/sys/class/power_supply/*/model_name`"),
    text(BATTERY_SERIAL_NUMBER, "Serial Number", 64, IDENTIFYING, "`/sys/class/power_supply/*/serial_number`"),
    text(BATTERY_TECHNOLOGY, "Technology", 32, PLAIN, "`/sys/class/power_supply/*/technology`"),
    number(BATTERY_DESIGN_CAPACITY, "Design Capacity", "mWh", PLAIN, "`/sys/class/power_supply/*/energy_full_design`; else `charge_full_design` times `voltage_min_design`"),
    number(BATTERY_FULL_CAPACITY, "Full Capacity", "mWh", VOLATILE, "`/sys/class/power_supply/*/energy_full`; else `charge_full` times `voltage_min_design`"),
    number(BATTERY_CYCLE_COUNT, "Cycle Count", "", VOLATILE, "`/sys/class/power_supply/*/cycle_count`"),
    text(BATTERY_STATUS, "Status", 32, VOLATILE, "`/sys/class/power_supply/*/status`"),
};
// clang-format on

constexpr uint32_t kKeys[] = {BATTERY_NAME};
constexpr PairingDef kPairing[] = {{{BATTERY_SERIAL_NUMBER}}};

static_assert(isWellFormed(kAttributes), "Battery: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Battery: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "Battery: pairing without attribute");
} // namespace

constexpr GroupDef BATTERY_GROUP = {
    .id = GROUP_BATTERY,
    .name = "Battery",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 1,
    .source = "`/sys/class/power_supply`: a row a battery",
};
} // namespace report
