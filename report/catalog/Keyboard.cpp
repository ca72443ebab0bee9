#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(KEYBOARD_TYPE, PLAIN, "", "as Name"),
    known(KEYBOARD_SUB_TYPE, PLAIN, "", "`/proc/bus/input/devices`, \"I:\": bus, vendor and product"),
    known(KEYBOARD_CODE_PAGE, PLAIN, "", "`/etc/vconsole.conf`, KEYMAP; else `/etc/default/keyboard`, XKBLAYOUT"),
    known(KEYBOARD_NUMBER_OF_FUNCTION_KEYS, PLAIN, "", "`/proc/bus/input/devices`, \"B: KEY\": keys F1 to F24"),
    known(KEYBOARD_CHARACTERS_PER_SECOND, PLAIN, "", "EVIOCGREP, period"),
    known(KEYBOARD_REPEAT_DELAY, PLAIN, "ms", "EVIOCGREP, delay"),
    text(KEYBOARD_NAME, "Name", 255, PLAIN, "`/proc/bus/input/devices`, \"N: Name\""),
    text(KEYBOARD_PHYSICAL_PATH, "Physical Path", 255, PLAIN, "`/proc/bus/input/devices`, \"P: Phys\""),
    text(KEYBOARD_BUS, "Bus", 32, PLAIN, "`/proc/bus/input/devices`, \"I: Bus\""),
};
// clang-format on

constexpr uint32_t kKeys[] = {KEYBOARD_NAME, KEYBOARD_PHYSICAL_PATH};

static_assert(isWellFormed(kAttributes), "Keyboard: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Keyboard: key without attribute");
} // namespace

constexpr GroupDef KEYBOARD_GROUP = {
    .id = GROUP_KEYBOARD,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "`/proc/bus/input/devices` and `/sys/class/input`: a row a keyboard",
};
} // namespace report
