#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
constexpr const char* kKinds[] = {"Temperature", "Fan", "Voltage", "Current", "Power", "Energy", "Humidity", nullptr};

// clang-format off
constexpr AttributeDef kAttributes[] = {
    text(SENSOR_CHIP, "Chip", 64, PLAIN, "`/sys/class/hwmon/*/name`"),
    text(SENSOR_BUS_ADDRESS, "Bus Address", 64, PLAIN, "link `/sys/class/hwmon/*/device`"),
    text(SENSOR_NAME, "Name", 128, PLAIN, "`*_label`; else the name of the input"),
    word(SENSOR_KIND, "Kind", 16, kKinds, PLAIN, "from the name of the input"),
    real(SENSOR_VALUE, "Value", "", VOLATILE, "`*_input`, in Unit"),
    text(SENSOR_UNIT, "Unit", 16, PLAIN, "unit of Value, by Kind"),
};
// clang-format on

constexpr uint32_t kKeys[] = {SENSOR_CHIP, SENSOR_BUS_ADDRESS, SENSOR_NAME};

static_assert(isWellFormed(kAttributes), "Sensor: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Sensor: key without attribute");
} // namespace

constexpr GroupDef SENSOR_GROUP = {
    .id = GROUP_SENSOR,
    .name = "Sensor",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "`/sys/class/hwmon`: a row an input",
};
} // namespace report
