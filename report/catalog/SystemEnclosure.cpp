#include "report/catalog/Groups.h"
#include "report/catalog/SharedTexts.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(SYSTEM_ENCLOSURE_MANUFACTURER, PLAIN, "", "structure type 3, manufacturer; else `/sys/class/dmi/id/chassis_vendor`"),
    known(SYSTEM_ENCLOSURE_VERSION, PLAIN, "", "structure type 3, version; else `/sys/class/dmi/id/chassis_version`"),
    known(SYSTEM_ENCLOSURE_SERIAL_NUMBER, IDENTIFYING, "", "structure type 3, serial number; else `/sys/class/dmi/id/chassis_serial`"),
    known(SYSTEM_ENCLOSURE_ASSET_TAG, IDENTIFYING, "", "structure type 3, asset tag; else `/sys/class/dmi/id/chassis_asset_tag`"),
    known(SYSTEM_ENCLOSURE_MODEL, PLAIN, "", "structure type 3, SKU number"),
    enumeration(SYSTEM_ENCLOSURE_CHASSIS_TYPE, "Chassis Type", CHASSIS_TYPE_ENUM_DEF, PLAIN, "structure type 3, type without its lock bit; else `/sys/class/dmi/id/chassis_type`"),
    number(SYSTEM_ENCLOSURE_HEIGHT, "Height", "U", PLAIN, "structure type 3, height, when not 0"),
    text(SYSTEM_ENCLOSURE_SKU_NUMBER, "SKU Number", 255, PLAIN, "structure type 3, SKU number"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "SystemEnclosure: bad row");
} // namespace

constexpr GroupDef SYSTEM_ENCLOSURE_GROUP = {
    .id = GROUP_SYSTEM_ENCLOSURE,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "structure type 3; else `/sys/class/dmi/id`",
};
} // namespace report
