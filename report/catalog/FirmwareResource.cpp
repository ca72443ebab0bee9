#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// Values of the kernel's fw_type (UEFI specification 23.4).
constexpr vexEnumDef kTypes[] = {
    {0, "Unknown"}, {1, "System Firmware"}, {2, "Device Firmware"}, {3, "UEFI Driver"}, {VEX_END, nullptr},
};
static_assert(isAscending(kTypes), "Firmware Resource types: bad row");

// clang-format off
constexpr AttributeDef kAttributes[] = {
    text(FIRMWARE_RESOURCE_CLASS, "Class", 36, PLAIN, "`fw_class`: GUID in lower case"),
    enumeration(FIRMWARE_RESOURCE_TYPE, "Type", kTypes, PLAIN, "`fw_type`"),
    number(FIRMWARE_RESOURCE_VERSION, "Version", "", PLAIN, "`fw_version`"),
    number(FIRMWARE_RESOURCE_LOWEST_VERSION, "Lowest Version", "", PLAIN, "`lowest_supported_fw_version`"),
};
// clang-format on

constexpr uint32_t kKeys[] = {FIRMWARE_RESOURCE_CLASS};

static_assert(isWellFormed(kAttributes), "Firmware Resource: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Firmware Resource: key without attribute");
} // namespace

constexpr GroupDef FIRMWARE_RESOURCE_GROUP = {
    .id = GROUP_FIRMWARE_RESOURCE,
    .name = "Firmware Resource",
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 1,
    .source = "`/sys/firmware/efi/esrt/entries`: a row an entry",
};
} // namespace report
