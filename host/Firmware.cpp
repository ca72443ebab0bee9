// Firmware: who wrote it, how it booted the machine, and the controller that watches over it.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/firmware/FirmwareFacts.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr std::string_view kEfi = "/sys/firmware/efi";
constexpr std::string_view kSecureBoot = "/sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c";
constexpr std::string_view kRelease = "/sys/class/dmi/id/bios_release";
constexpr std::string_view kEntryPoint = "/sys/firmware/dmi/tables/smbios_entry_point";
constexpr std::string_view kIpmi = "/sys/class/ipmi";

// BIOS Information (DSP0134, 7.1): the release's two bytes are 0xFF where the firmware has none.
MaybeFact releaseOf(const FirmwareFacts& firmware, const Root& root)
{
    constexpr size_t kMajor = 20, kMinor = 21;
    constexpr uint8_t kNone = 0xFF;
    const Structure* structure = firmware.table().first(SMBIOS_FIRMWARE);
    if (structure == nullptr)
        return root.fact(kRelease);
    const std::optional<uint8_t> major = structure->byte(kMajor);
    const std::optional<uint8_t> minor = structure->byte(kMinor);
    if (!major || !minor || *major == kNone || *minor == kNone)
        return std::nullopt;
    return Fact{std::to_string(*major) + '.' + std::to_string(*minor), std::string(FirmwareFacts::kTablePath)};
}

void addInterface(const FirmwareFacts& firmware, const Root& root, RowBuilder& row)
{
    if (root.exists(kEfi))
        row.text(FIRMWARE_INTERFACE, "UEFI", kEfi);
    else if (!firmware.table().isEmpty() || root.exists("/sys/class/dmi/id"))
        row.text(FIRMWARE_INTERFACE, "BIOS", kEfi);
}

// The variable's content stands behind four bytes of attributes (UEFI 2.10, 3.3).
std::optional<bool> secureBoot(const Root& root)
{
    constexpr size_t kContent = 4;
    const std::optional<std::string> variable = root.read(kSecureBoot, Root::kLineLimit);
    if (!variable || variable->size() <= kContent)
        return std::nullopt;
    return (*variable)[kContent] == 1;
}

// IPMI Device Information (7.39): interface type, and the version in two BCD digits.
MaybeFact managementController(const FirmwareFacts& firmware, const Root& root)
{
    constexpr size_t kType = 4, kVersion = 5;
    constexpr const char* kInterfaces[] = {"Unknown", "KCS", "SMIC", "BT", "SSIF"};
    const Structure* device = firmware.table().first(SMBIOS_IPMI);
    const std::optional<uint8_t> type = device != nullptr ? device->byte(kType) : std::nullopt;
    const std::optional<uint8_t> version = device != nullptr ? device->byte(kVersion) : std::nullopt;
    if (type && version) {
        const char* interface = *type < std::size(kInterfaces) ? kInterfaces[*type] : kInterfaces[0];
        return Fact{std::string(interface) + ", IPMI " + std::to_string(*version >> 4) + '.' +
                        std::to_string(*version & 0xF),
                    std::string(FirmwareFacts::kTablePath)};
    }
    const std::vector<std::string> devices = root.list(kIpmi);
    return devices.empty() ? std::nullopt : MaybeFact(Fact{devices.front(), std::string(kIpmi)});
}
} // namespace

void collectFirmware(const Machine& machine, Collection& collection)
{
    constexpr size_t kVendor = 4, kVersion = 5; // 7.1
    const FirmwareFacts firmware(machine.root, collection.notes());
    RowBuilder row(GROUP_FIRMWARE);
    row.text(FIRMWARE_VENDOR, firmware.text(SMBIOS_FIRMWARE, kVendor, "bios_vendor"));
    row.text(FIRMWARE_VERSION, firmware.text(SMBIOS_FIRMWARE, kVersion, "bios_version"));
    row.text(FIRMWARE_DATE, firmware.releaseDate());
    row.text(FIRMWARE_RELEASE, releaseOf(firmware, machine.root));
    addInterface(firmware, machine.root, row);
    row.yesNo(FIRMWARE_SECURE_BOOT, secureBoot(machine.root), kSecureBoot);
    row.text(FIRMWARE_SMBIOS_VERSION, firmware.table().version(), kEntryPoint);
    row.text(FIRMWARE_BMC, managementController(firmware, machine.root));
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
