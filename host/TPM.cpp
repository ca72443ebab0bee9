// TPM: a row a trusted platform module. Kernels tell the maker of a TPM 1.2 alone; the firmware's table tells it of the
// one that is on the board.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/firmware/FirmwareFacts.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kChips = "/sys/class/tpm/";

// TPM Device (DSP0134, 7.44).
constexpr size_t kVendor = 4, kVendorLength = 4, kMajor = 8, kMinor = 9;

// The letters of a maker's id of four bytes, unused ones zero or blank.
std::string makerOf(std::string_view id)
{
    std::string letters;
    for (const char c : id)
        if (c > ' ' && c <= '~')
            letters += c;
    return letters;
}

// "Manufacturer: 0x49465800": the bytes, first letter first.
std::string makerOfCapability(std::string_view value)
{
    if (!value.starts_with("0x"))
        return "";
    const std::optional<uint32_t> id = report::parseNumber<uint32_t>(value.substr(2), 16);
    std::string bytes;
    for (int shift = 24; id && shift >= 0; shift -= 8)
        bytes += static_cast<char>(*id >> shift & 0xFF);
    return makerOf(bytes);
}

// What a TPM 1.2 says of itself: "Manufacturer: 0x...", "TCG version: 1.2".
void addCapabilities(const Root& root, const std::string& folder, RowBuilder& row)
{
    for (const char* name : {"caps", "device/caps"}) {
        const std::string path = folder + name;
        const std::string text = root.read(path).value_or("");
        std::string_view rest = text, line;
        while (report::takeLine(rest, line)) {
            const report::KeyValue pair = report::keyValue(line, ':');
            if (pair.key == "Manufacturer")
                row.text(TPM_MANUFACTURER, makerOfCapability(pair.value), path);
            if (pair.key == "TCG version")
                row.text(TPM_VERSION, pair.value, path);
        }
    }
}

// The kernel tells the family's number: 1 stands for TPM 1.2, 2 for TPM 2.0.
void addVersion(const Root& root, const std::string& folder, RowBuilder& row)
{
    const std::string path = folder + "tpm_version_major";
    const std::optional<uint64_t> major = root.number(path);
    if (major && (*major == 1 || *major == 2))
        row.text(TPM_VERSION, *major == 1 ? "1.2" : "2.0", path);
}

void addStructure(const Structure& device, RowBuilder& row)
{
    if (!row.has(TPM_MANUFACTURER))
        row.text(TPM_MANUFACTURER, makerOf(device.field(kVendor, kVendorLength)), FirmwareFacts::kTablePath);
    const std::optional<uint8_t> major = device.byte(kMajor), minor = device.byte(kMinor);
    if (!row.has(TPM_VERSION) && major && minor)
        row.text(TPM_VERSION, std::to_string(*major) + '.' + std::to_string(*minor), FirmwareFacts::kTablePath);
}
} // namespace

void collectTPM(const Machine& machine, Collection& collection)
{
    const std::vector<std::string> chips = machine.root.list(kChips);
    if (chips.empty())
        return;
    const FirmwareFacts firmware(machine.root, collection.notes());
    const std::vector<const Structure*> devices = firmware.table().all(SMBIOS_TPM);
    for (const std::string& name : chips) {
        const std::string folder = kChips + name + '/';
        RowBuilder row(GROUP_TPM);
        row.text(TPM_NAME, name, kChips);
        addCapabilities(machine.root, folder, row);
        addVersion(machine.root, folder, row);
        if (chips.size() == 1 && devices.size() == 1)
            addStructure(*devices.front(), row);
        collection.add(std::move(row));
    }
}
} // namespace host
