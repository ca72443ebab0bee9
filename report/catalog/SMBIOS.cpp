#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(SMBIOS_BIOS_VENDOR, PLAIN, "", "structure type 0, vendor; else `/sys/class/dmi/id/bios_vendor`"),
    known(SMBIOS_BIOS_VERSION, PLAIN, "", "structure type 0, version; else `/sys/class/dmi/id/bios_version`"),
    known(SMBIOS_BIOS_DATE, PLAIN, "", "structure type 0, release date as YYYY-MM-DD; else `/sys/class/dmi/id/bios_date`"),
    known(SMBIOS_BIOS_SIZE, PLAIN, "", "structure type 0, ROM size or extended ROM size and \"K\""),
    known(SMBIOS_SYSTEM_MANUFACTURER, PLAIN, "", "structure type 1, manufacturer; else `/sys/class/dmi/id/sys_vendor`"),
    known(SMBIOS_SYSTEM_PRODUCT_NAME, PLAIN, "", "structure type 1, product; else `/sys/class/dmi/id/product_name`"),
    known(SMBIOS_SYSTEM_VERSION, PLAIN, "", "structure type 1, version; else `/sys/class/dmi/id/product_version`"),
    known(SMBIOS_SYSTEM_SERIAL_NUMBER, IDENTIFYING, "", "structure type 1, serial number; else `/sys/class/dmi/id/product_serial`"),
    known(SMBIOS_SYSTEM_UUID, IDENTIFYING, "", "structure type 1, UUID as 32 hexadecimal digits in the table's order of bytes"),
    known(SMBIOS_BOARD_MANUFACTURER, PLAIN, "", "structure type 2, manufacturer; else `/sys/class/dmi/id/board_vendor`"),
    known(SMBIOS_BOARD_PRODUCT, PLAIN, "", "structure type 2, product; else `/sys/class/dmi/id/board_name`"),
    known(SMBIOS_BOARD_VERSION, PLAIN, "", "structure type 2, version; else `/sys/class/dmi/id/board_version`"),
    known(SMBIOS_BOARD_SERIAL_NUMBER, IDENTIFYING, "", "structure type 2, serial number; else `/sys/class/dmi/id/board_serial`"),
    known(SMBIOS_ENCLOSURE_MANUFACTURER, PLAIN, "", "structure type 3, manufacturer; else `/sys/class/dmi/id/chassis_vendor`"),
    known(SMBIOS_ENCLOSURE_TYPE, PLAIN, "", "structure type 3, type without its lock bit, when it has a text; else `/sys/class/dmi/id/chassis_type`"),
    known(SMBIOS_ENCLOSURE_VERSION, PLAIN, "", "structure type 3, version; else `/sys/class/dmi/id/chassis_version`"),
    known(SMBIOS_ENCLOSURE_SERIAL_NUMBER, IDENTIFYING, "", "structure type 3, serial number; else `/sys/class/dmi/id/chassis_serial`"),
    known(SMBIOS_ENCLOSURE_ASSET_TAG, IDENTIFYING, "", "structure type 3, asset tag; else `/sys/class/dmi/id/chassis_asset_tag`"),
    known(SMBIOS_ID, PLAIN, "", "MD5 digest of makers, products and versions, as invhw makes it: no serial number and no UUID in it"),
    known(SMBIOS_POWERON_PASSWORD, PLAIN, "", "structure type 24, power-on password status"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "SMBIOS: bad row");
} // namespace

constexpr GroupDef SMBIOS_GROUP = {
    .id = GROUP_SMBIOS,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "structure types 0 to 3 and 24 of `/sys/firmware/dmi/tables/DMI`; else `/sys/class/dmi/id`",
};
} // namespace report
