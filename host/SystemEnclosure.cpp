// System Enclosure: the chassis, from the firmware's table or what the kernel shows of it.

#include "host/Collectors.h"
#include "host/firmware/FirmwareFacts.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// System Enclosure or Chassis (DSP0134, 7.4).
constexpr size_t kManufacturer = 4, kVersion = 6, kSerialNumber = 7, kAssetTag = 8, kHeight = 17;

// The SKU number stands behind the contained elements, whose count and length are fields of their own.
MaybeFact skuNumber(const FirmwareFacts& firmware)
{
    constexpr size_t kElementCount = 19, kElementLength = 20, kElements = 21;
    const Structure* chassis = firmware.table().first(SMBIOS_CHASSIS);
    const std::optional<uint8_t> count = chassis != nullptr ? chassis->byte(kElementCount) : std::nullopt;
    const std::optional<uint8_t> length = chassis != nullptr ? chassis->byte(kElementLength) : std::nullopt;
    if (!count || !length)
        return std::nullopt;
    return firmware.text(SMBIOS_CHASSIS, kElements + size_t{*count} * *length, nullptr);
}

// In rack units; 0: not said.
std::optional<uint8_t> heightOf(const FirmwareFacts& firmware)
{
    const Structure* chassis = firmware.table().first(SMBIOS_CHASSIS);
    const std::optional<uint8_t> height = chassis != nullptr ? chassis->byte(kHeight) : std::nullopt;
    return height && *height != 0 ? height : std::nullopt;
}
} // namespace

void collectSystemEnclosure(const Machine& machine, Collection& collection)
{
    const FirmwareFacts firmware(machine.root, collection.notes());
    RowBuilder row(GROUP_SYSTEM_ENCLOSURE);
    row.text(SYSTEM_ENCLOSURE_MANUFACTURER, firmware.text(SMBIOS_CHASSIS, kManufacturer, "chassis_vendor"));
    row.text(SYSTEM_ENCLOSURE_VERSION, firmware.text(SMBIOS_CHASSIS, kVersion, "chassis_version"));
    row.text(SYSTEM_ENCLOSURE_SERIAL_NUMBER, firmware.text(SMBIOS_CHASSIS, kSerialNumber, "chassis_serial"));
    row.text(SYSTEM_ENCLOSURE_ASSET_TAG, firmware.text(SMBIOS_CHASSIS, kAssetTag, "chassis_asset_tag"));
    const MaybeFact sku = skuNumber(firmware);
    row.text(SYSTEM_ENCLOSURE_MODEL, sku);
    std::string source;
    const std::optional<uint8_t> type = firmware.chassisType(source);
    row.number(SYSTEM_ENCLOSURE_CHASSIS_TYPE, type, source);
    row.number(SYSTEM_ENCLOSURE_HEIGHT, heightOf(firmware), FirmwareFacts::kTablePath);
    row.text(SYSTEM_ENCLOSURE_SKU_NUMBER, sku);
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
