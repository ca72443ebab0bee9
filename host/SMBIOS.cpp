// SMBIOS: firmware, system, board and enclosure as the firmware's table names them; where only root may read it, what
// the kernel shows of it to all.

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/firmware/FirmwareFacts.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// A string of a structure. Those that are no serial number go into the digest of the row's ID.
struct StringField {
    uint32_t attribute;
    StructureType type;
    size_t offset;    // DSP0134, 7.1 to 7.4
    const char* name; // below /sys/class/dmi/id
    bool inDigest;
};
constexpr StringField kBios[] = {
    {SMBIOS_BIOS_VENDOR, SMBIOS_FIRMWARE, 4, "bios_vendor", true},
    {SMBIOS_BIOS_VERSION, SMBIOS_FIRMWARE, 5, "bios_version", true},
};
constexpr StringField kSystem[] = {
    {SMBIOS_SYSTEM_MANUFACTURER, SMBIOS_SYSTEM, 4, "sys_vendor", true},
    {SMBIOS_SYSTEM_PRODUCT_NAME, SMBIOS_SYSTEM, 5, "product_name", true},
    {SMBIOS_SYSTEM_VERSION, SMBIOS_SYSTEM, 6, "product_version", true},
    {SMBIOS_SYSTEM_SERIAL_NUMBER, SMBIOS_SYSTEM, 7, "product_serial", false},
};
constexpr StringField kBoard[] = {
    {SMBIOS_BOARD_MANUFACTURER, SMBIOS_BOARD, 4, "board_vendor", true},
    {SMBIOS_BOARD_PRODUCT, SMBIOS_BOARD, 5, "board_name", true},
    {SMBIOS_BOARD_VERSION, SMBIOS_BOARD, 6, "board_version", true},
    {SMBIOS_BOARD_SERIAL_NUMBER, SMBIOS_BOARD, 7, "board_serial", false},
};
constexpr StringField kEnclosureMaker[] = {
    {SMBIOS_ENCLOSURE_MANUFACTURER, SMBIOS_CHASSIS, 4, "chassis_vendor", true},
};
constexpr StringField kEnclosure[] = {
    {SMBIOS_ENCLOSURE_VERSION, SMBIOS_CHASSIS, 6, "chassis_version", true},
    {SMBIOS_ENCLOSURE_SERIAL_NUMBER, SMBIOS_CHASSIS, 7, "chassis_serial", false},
    {SMBIOS_ENCLOSURE_ASSET_TAG, SMBIOS_CHASSIS, 8, "chassis_asset_tag", false},
};

// The row and the text that its ID is the digest of: makers, products and versions in the order of the row, "|" for one
// that is missing.
struct Identified {
    RowBuilder row;
    std::string identity;
};

template <size_t N>
void addStrings(const FirmwareFacts& firmware, const StringField (&fields)[N], Identified& to)
{
    for (const StringField& field : fields) {
        const MaybeFact fact = firmware.text(field.type, field.offset, field.name);
        to.row.text(field.attribute, fact);
        if (field.inDigest)
            to.identity += fact ? fact->value : "|";
    }
}

// ROM size in units of 64 kB less one; 0xFF refers to the extended size, whose two upper bits are its unit (7.1).
std::optional<uint64_t> romKilobytes(const Structure& firmware)
{
    constexpr size_t kRomSize = 9, kExtendedRomSize = 24;
    constexpr uint8_t kSeeExtended = 0xFF;
    const std::optional<uint8_t> size = firmware.byte(kRomSize);
    if (!size)
        return std::nullopt;
    const std::optional<uint16_t> extended = firmware.word(kExtendedRomSize);
    if (*size != kSeeExtended || !extended)
        return (uint64_t{*size} + 1) * 64;
    const uint64_t amount = *extended & 0x3FFF;
    switch (*extended >> 14) {
    case 0:
        return amount * 1024;
    case 1:
        return amount * 1024 * 1024;
    default:
        return std::nullopt;
    }
}

void addBios(const FirmwareFacts& firmware, Identified& to)
{
    addStrings(firmware, kBios, to);
    to.row.text(SMBIOS_BIOS_DATE, firmware.releaseDate());
    const Structure* structure = firmware.table().first(SMBIOS_FIRMWARE);
    const std::optional<uint64_t> size = structure != nullptr ? romKilobytes(*structure) : std::nullopt;
    const std::string text = size ? std::to_string(*size) + 'K' : "";
    to.row.text(SMBIOS_BIOS_SIZE, text, FirmwareFacts::kTablePath);
    to.identity += size ? text : "|";
}

void addEnclosure(const FirmwareFacts& firmware, Identified& to)
{
    addStrings(firmware, kEnclosureMaker, to);
    std::string source;
    const std::optional<uint8_t> type = firmware.chassisType(source);
    if (type &&
        report::enumText(report::findGroup(GROUP_SMBIOS)->find(SMBIOS_ENCLOSURE_TYPE)->enums, *type) != nullptr) {
        to.row.number(SMBIOS_ENCLOSURE_TYPE, type, source);
        to.identity += std::to_string(*type);
    }
    addStrings(firmware, kEnclosure, to);
}

// Hardware Security (7.25): the power-on password's state in bits 6 and 7.
void addPassword(const FirmwareFacts& firmware, RowBuilder& row)
{
    constexpr size_t kSettings = 4;
    const Structure* security = firmware.table().first(SMBIOS_HARDWARE_SECURITY);
    const std::optional<uint8_t> settings = security != nullptr ? security->byte(kSettings) : std::nullopt;
    if (settings)
        row.number(SMBIOS_POWERON_PASSWORD, *settings >> 6, FirmwareFacts::kTablePath);
}
} // namespace

void collectSMBIOS(const Machine& machine, Collection& collection)
{
    const FirmwareFacts firmware(machine.root, collection.notes());
    Identified to{RowBuilder(GROUP_SMBIOS), ""};
    addBios(firmware, to);
    addStrings(firmware, kSystem, to);
    to.row.text(SMBIOS_SYSTEM_UUID, firmware.rawUuid()); // in the order of its bytes, as this attribute has always been
    addStrings(firmware, kBoard, to);
    addEnclosure(firmware, to);
    if (to.row.isEmpty())
        return;
    to.row.text(SMBIOS_ID, md5(to.identity), "");
    addPassword(firmware, to.row);
    collection.add(std::move(to.row));
}
} // namespace host
