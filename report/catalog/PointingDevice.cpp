#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(POINTING_DEVICE_INDEX, PLAIN, "", "row number from 1"),
    known(POINTING_DEVICE_ID, PLAIN, "", "MD5 digest of Name and Physical Path"),
    known(POINTING_DEVICE_TYPE, PLAIN, "", "`/proc/bus/input/devices`, \"B:\" lines: mouse, track point, touch pad or touch screen; Other for a pen"),
    known(POINTING_DEVICE_NUMBER_OF_BUTTONS, PLAIN, "", "`/proc/bus/input/devices`, \"B: KEY\": codes 0x110 to 0x117"),
    known(POINTING_DEVICE_HANDEDNESS, PLAIN, "", "not produced by invhwctl"),
    known(POINTING_DEVICE_MODEL, PLAIN, "", "as Name"),
    known(POINTING_DEVICE_DOUBLE_CLICK_INTERVAL, PLAIN, "", "not produced by invhwctl"),
    known(POINTING_DEVICE_SENSITIVITY, PLAIN, "", "`/sys/module/psmouse/parameters/resolution`, of mice and track points on PS/2"),
    text(POINTING_DEVICE_NAME, "Name", 255, PLAIN, "`/proc/bus/input/devices`, \"N: Name\""),
    text(POINTING_DEVICE_PHYSICAL_PATH, "Physical Path", 255, PLAIN, "`/proc/bus/input/devices`, \"P: Phys\""),
    text(POINTING_DEVICE_BUS, "Bus", 32, PLAIN, "`/proc/bus/input/devices`, \"I: Bus\""),
};
// clang-format on

constexpr uint32_t kKeys[] = {POINTING_DEVICE_NAME, POINTING_DEVICE_PHYSICAL_PATH};

static_assert(isWellFormed(kAttributes), "PointingDevice: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "PointingDevice: key without attribute");
} // namespace

constexpr GroupDef POINTING_DEVICE_GROUP = {
    .id = GROUP_POINTING_DEVICE,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "`/proc/bus/input/devices` and `/sys/class/input`: a row a pointing device",
};
} // namespace report
