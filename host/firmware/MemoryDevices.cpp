#include "host/firmware/MemoryDevices.h"

#include <algorithm>
#include <map>

#include "report/Text.h"

namespace host
{
namespace
{
// Names by value; null where the standard gives none (7.18.1, 7.18.2).
constexpr const char* kFormFactors[] = {
    nullptr, "Other", nullptr,        "SIMM", "SIP",    "Chip",  "DIP",     "ZIP", "Proprietary Card",
    "DIMM",  "TSOP",  "Row of chips", "RIMM", "SODIMM", "SRIMM", "FB-DIMM", "Die", "CAMM",
};
constexpr const char* kTypes[] = {
    nullptr, "Other", nullptr,  "DRAM",   "EDRAM",        "VRAM",   "SRAM",   "RAM",
    "ROM",   "FLASH", "EEPROM", "FEPROM", "EPROM",        "CDRAM",  "3DRAM",  "SDRAM",
    "SGRAM", "RDRAM", "DDR",    "DDR2",   "DDR2 FB-DIMM", nullptr,  nullptr,  nullptr,
    "DDR3",  "FBD2",  "DDR4",   "LPDDR",  "LPDDR2",       "LPDDR3", "LPDDR4", "Logical non-volatile device",
    "HBM",   "HBM2",  "DDR5",   "LPDDR5", "HBM3",
};
// Type detail by bit (7.18.3).
constexpr const char* kTypeDetails[16] = {
    nullptr, nullptr, nullptr,       "Fast-paged", "Static column", "Pseudo-static", "Rambus",     "Synchronous",
    "CMOS",  "EDO",   "Window DRAM", "Cache DRAM", "Non-volatile",  "Registered",    "Unbuffered", "LRDIMM",
};

template <size_t N>
std::string nameOf(const char* const (&names)[N], std::optional<uint8_t> value)
{
    return value && *value < N && names[*value] != nullptr ? names[*value] : "";
}

std::string detailOf(std::optional<uint16_t> bits)
{
    std::string text;
    for (size_t bit = 0; bits && bit < std::size(kTypeDetails); ++bit)
        if ((*bits >> bit & 1) != 0 && kTypeDetails[bit] != nullptr)
            text += (text.empty() ? "" : " ") + std::string(kTypeDetails[bit]);
    return text;
}

// Whole megabytes. What is smaller is unknown rather than 0, which says that nothing is installed.
std::optional<uint64_t> megabytesOf(uint64_t size, uint64_t unitsOfMegabyte)
{
    const uint64_t megabytes = size / unitsOfMegabyte;
    return size != 0 && megabytes == 0 ? std::nullopt : std::optional<uint64_t>(megabytes);
}

// Size in MB, or with bit 15 in kB; 0xFFFF unknown, 0x7FFF: see the extended size, in MB.
std::optional<uint64_t> sizeOf(const Structure& device)
{
    constexpr size_t kSize = 12, kExtendedSize = 28;
    constexpr uint16_t kUnknown = 0xFFFF, kSeeExtended = 0x7FFF, kKilobytes = 0x8000;
    const std::optional<uint16_t> size = device.word(kSize);
    if (!size || *size == kUnknown)
        return std::nullopt;
    if (*size == kSeeExtended) {
        const std::optional<uint32_t> extended = device.doubleWord(kExtendedSize);
        return extended ? std::optional<uint64_t>(*extended & 0x7FFFFFFF) : std::nullopt;
    }
    return (*size & kKilobytes) != 0 ? megabytesOf(*size & 0x7FFFU, 1024) : megabytesOf(*size, 1);
}

// MT/s; 0 unknown, 0xFFFF: see the extended field.
std::optional<uint64_t> speedOf(const Structure& device, size_t offset, size_t extendedOffset)
{
    constexpr uint16_t kSeeExtended = 0xFFFF;
    std::optional<uint64_t> speed = device.word(offset);
    if (speed == kSeeExtended) {
        const std::optional<uint32_t> extended = device.doubleWord(extendedOffset);
        speed = extended ? std::optional<uint64_t>(*extended & 0x7FFFFFFF) : std::nullopt;
    }
    return speed && *speed != 0 ? speed : std::nullopt;
}

// A number whose "unknown" is said by 0 or by another value.
template <typename T>
std::optional<uint64_t> unless(std::optional<T> value, T unknown)
{
    return value && *value != 0 && *value != unknown ? std::optional<uint64_t>(*value) : std::nullopt;
}

MemoryDevice deviceOf(const Structure& structure)
{
    constexpr uint16_t kUnknownWidth = 0xFFFF;
    constexpr uint8_t kRankBits = 0x0F;
    MemoryDevice device;
    device.sizeMB = sizeOf(structure);
    device.totalWidth = unless<uint16_t>(structure.word(8), kUnknownWidth);
    device.dataWidth = unless<uint16_t>(structure.word(10), kUnknownWidth);
    device.formFactor = nameOf(kFormFactors, structure.byte(14));
    device.socket = structure.string(16);
    device.bank = structure.string(17);
    device.type = nameOf(kTypes, structure.byte(18));
    device.typeDetail = detailOf(structure.word(19));
    device.speed = speedOf(structure, 21, 84);
    device.manufacturer = structure.string(23);
    device.serialNumber = structure.string(24);
    device.assetTag = structure.string(25);
    device.partNumber = structure.string(26);
    if (const std::optional<uint8_t> attributes = structure.byte(27))
        device.rank = unless<uint8_t>(static_cast<uint8_t>(*attributes & kRankBits), 0);
    device.configuredSpeed = speedOf(structure, 32, 88);
    device.configuredMillivolts = unless<uint16_t>(structure.word(38), 0);
    return device;
}

// An array's capacity in kB; 0x80000000: see the extended capacity, in bytes (7.17).
uint64_t capacityMB(const Structure& array)
{
    constexpr size_t kCapacity = 7, kExtendedCapacity = 15;
    constexpr uint32_t kSeeExtended = 0x80000000;
    const std::optional<uint32_t> kilobytes = array.doubleWord(kCapacity);
    if (kilobytes == kSeeExtended)
        return array.quadWord(kExtendedCapacity).value_or(0) >> 20;
    return kilobytes.value_or(0) >> 10;
}

uint16_t socketsOf(const Structure& array)
{
    constexpr size_t kSockets = 13;
    return array.word(kSockets).value_or(0);
}

// The share of one socket in its array, by the array's handle.
std::map<uint16_t, uint64_t> shares(const StructureTable& table)
{
    std::map<uint16_t, uint64_t> byHandle;
    for (const Structure* array : table.all(SMBIOS_MEMORY_ARRAY))
        if (socketsOf(*array) != 0)
            byHandle[array->handle()] = capacityMB(*array) / socketsOf(*array);
    return byHandle;
}

// A name of the standard as udev writes it: it explains two of them, and says when there is none.
std::string standardName(std::string_view value)
{
    constexpr std::string_view kExplained[] = {" (Buffered)", " (Unregistered)"};
    constexpr std::string_view kNothing[] = {"Unknown", "None", "<OUT OF SPEC>"};
    for (const std::string_view explained : kExplained)
        if (value.ends_with(explained))
            value.remove_suffix(explained.size());
    return std::find(std::begin(kNothing), std::end(kNothing), value) != std::end(kNothing) ? "" : std::string(value);
}

// udev's name of a device's property -> what it fills.
void takeUdevValue(std::string_view name, std::string_view value, MemoryDevice& device)
{
    static constexpr struct {
        std::string_view name;
        std::string MemoryDevice::*text;
        bool isStandard = false; // a name of the standard, not the firmware's own text
    } kTexts[] = {
        {"LOCATOR", &MemoryDevice::socket},
        {"BANK_LOCATOR", &MemoryDevice::bank},
        {"FORM_FACTOR", &MemoryDevice::formFactor, true},
        {"TYPE", &MemoryDevice::type, true},
        {"TYPE_DETAIL", &MemoryDevice::typeDetail, true},
        {"MANUFACTURER", &MemoryDevice::manufacturer},
        {"PART_NUMBER", &MemoryDevice::partNumber},
        {"SERIAL_NUMBER", &MemoryDevice::serialNumber},
        {"ASSET_TAG", &MemoryDevice::assetTag},
    };
    static constexpr struct {
        std::string_view name;
        std::optional<uint64_t> MemoryDevice::*number;
    } kNumbers[] = {
        {"SPEED_MTS", &MemoryDevice::speed},
        {"CONFIGURED_SPEED_MTS", &MemoryDevice::configuredSpeed},
        {"RANK", &MemoryDevice::rank},
        {"DATA_WIDTH", &MemoryDevice::dataWidth},
        {"TOTAL_WIDTH", &MemoryDevice::totalWidth},
    };
    for (const auto& text : kTexts)
        if (text.name == name)
            device.*text.text = text.isStandard ? standardName(value) : std::string(value);
    for (const auto& number : kNumbers)
        if (number.name == name)
            device.*number.number = report::parseNumber(value);
    if (name == "SIZE")
        if (const std::optional<uint64_t> bytes = report::parseNumber(value))
            device.sizeMB = megabytesOf(*bytes, 1U << 20);
    if (name == "PRESENT" && value == "0")
        device.sizeMB = 0;
}
} // namespace

std::vector<MemoryDevice> memoryDevicesOf(const StructureTable& table)
{
    constexpr size_t kArrayHandle = 4;
    const std::map<uint16_t, uint64_t> share = shares(table);
    std::vector<MemoryDevice> devices;
    for (const Structure* structure : table.all(SMBIOS_MEMORY_DEVICE)) {
        devices.push_back(deviceOf(*structure));
        const auto found = share.find(structure->word(kArrayHandle).value_or(0));
        if (found != share.end() && found->second != 0)
            devices.back().mostMB = found->second;
    }
    return devices;
}

std::vector<MemoryDevice> memoryDevicesOfUdev(std::string_view text)
{
    constexpr std::string_view kPrefix = "E:MEMORY_DEVICE_";
    std::map<uint32_t, MemoryDevice> byNumber;
    std::string_view line;
    while (report::takeLine(text, line)) {
        if (!line.starts_with(kPrefix))
            continue;
        const auto [name, value] = report::keyValue(line.substr(kPrefix.size()), '=');
        const size_t end = name.find('_');
        const auto number = report::parseNumber<uint16_t>(name.substr(0, end));
        if (number && end != std::string_view::npos)
            takeUdevValue(name.substr(end + 1), value, byNumber[*number]);
    }
    std::vector<MemoryDevice> devices;
    devices.reserve(byNumber.size());
    for (auto& [number, device] : byNumber)
        devices.push_back(std::move(device));
    return devices;
}

MemoryLimits memoryLimitsOf(const StructureTable& table)
{
    constexpr size_t kUse = 5;
    constexpr uint8_t kSystemMemory = 3;
    MemoryLimits limits;
    for (const Structure* array : table.all(SMBIOS_MEMORY_ARRAY)) {
        if (array->byte(kUse) != kSystemMemory)
            continue;
        limits.mostMB += capacityMB(*array);
        limits.sockets += socketsOf(*array);
    }
    return limits;
}
} // namespace host
