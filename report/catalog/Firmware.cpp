#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
constexpr const char* kInterfaces[] = {"UEFI", "BIOS", nullptr};

// clang-format off
constexpr AttributeDef kAttributes[] = {
    text(FIRMWARE_VENDOR, "Vendor", 255, PLAIN, "structure type 0, vendor; else `/sys/class/dmi/id/bios_vendor`"),
    text(FIRMWARE_VERSION, "Version", 255, PLAIN, "structure type 0, version; else `/sys/class/dmi/id/bios_version`"),
    text(FIRMWARE_DATE, "Date", 16, PLAIN, "structure type 0, release date as YYYY-MM-DD; else `/sys/class/dmi/id/bios_date`"),
    text(FIRMWARE_RELEASE, "Release", 16, PLAIN, "structure type 0, major and minor release; else `/sys/class/dmi/id/bios_release`"),
    word(FIRMWARE_INTERFACE, "Interface", 8, kInterfaces, PLAIN, "UEFI where `/sys/firmware/efi` exists; BIOS where there is a structure table without it"),
    yesNo(FIRMWARE_SECURE_BOOT, "Secure Boot", PLAIN, "`/sys/firmware/efi/efivars/SecureBoot-*`, byte 4"),
    text(FIRMWARE_SMBIOS_VERSION, "SMBIOS Version", 16, PLAIN, "`/sys/firmware/dmi/tables/smbios_entry_point`"),
    text(FIRMWARE_BMC, "BMC", 128, PLAIN, "structure type 38, interface and IPMI version; else `/sys/class/ipmi`"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "Firmware: bad row");
} // namespace

constexpr GroupDef FIRMWARE_GROUP = {
    .id = GROUP_FIRMWARE,
    .name = "Firmware",
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 1,
    .source = "structure types 0 and 38, `/sys/firmware`, `/sys/class/ipmi`",
};
} // namespace report
