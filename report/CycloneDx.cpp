#include "report/CycloneDx.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include <nlohmann/json.hpp>

#include "report/Identity.h"
#include "report/Text.h"
#include "report/Writer.h"
#include "report/catalog/AttributeIds.h"
#include "report/summary/Sections.h"

namespace report
{
using Json = nlohmann::ordered_json;
using summary::firstRow;
using summary::textOf;

// A group whose rows are parts. Attributes that a group has not are 0.
struct PartGroup {
    uint32_t group;
    const char* type; // as the bill names it
    const char* name; // of a part that has none of its own
    uint32_t names[2];
    uint32_t version;
    uint32_t maker;
    uint32_t firmware; // its version, of a part that has firmware of its own
    uint32_t driver;
};

namespace
{
constexpr const char* kDevice = "device";
constexpr const char* kFirmware = "firmware";

// clang-format off
constexpr PartGroup kParts[] = {
    {GROUP_SYSTEM_ENCLOSURE, kDevice, "Enclosure", {SYSTEM_ENCLOSURE_MODEL}, SYSTEM_ENCLOSURE_VERSION, SYSTEM_ENCLOSURE_MANUFACTURER, 0, 0},
    {GROUP_FIRMWARE, kFirmware, "System firmware", {}, FIRMWARE_VERSION, FIRMWARE_VENDOR, 0, 0},
    {GROUP_FIRMWARE_RESOURCE, kFirmware, "Firmware resource", {FIRMWARE_RESOURCE_CLASS}, FIRMWARE_RESOURCE_VERSION, 0, 0, 0},
    {GROUP_SMBIOS, kFirmware, "System firmware", {}, SMBIOS_BIOS_VERSION, SMBIOS_BIOS_VENDOR, 0, 0},
    {GROUP_OPERATING_SYSTEM, "operating-system", "Operating system", {OPERATING_SYSTEM_PRETTY_NAME, OPERATING_SYSTEM_NAME}, OPERATING_SYSTEM_VERSION_ID, 0, 0, 0},
    {GROUP_PROCESSOR, kDevice, "Processor", {PROCESSOR_MODEL_NAME, PROCESSOR_FAMILY}, 0, PROCESSOR_MANUFACTURER, PROCESSOR_MICROCODE, 0},
    {GROUP_MEMORY_MODULES, kDevice, "Memory module", {MEMORY_MODULES_PART_NUMBER, MEMORY_MODULES_MEMORY_TYPE}, 0, MEMORY_MODULES_MANUFACTURER, 0, 0},
    {GROUP_STORAGE, kDevice, "Drive", {STORAGE_MODEL, STORAGE_DEVICE_NAME}, 0, STORAGE_MANUFACTURER, STORAGE_FIRMWARE_REVISION, STORAGE_DRIVER},
    {GROUP_NETWORK_ADAPTER, kDevice, "Network adapter", {NETWORK_ADAPTER_MODEL, NETWORK_ADAPTER_INTERFACE}, 0, NETWORK_ADAPTER_MANUFACTURER, NETWORK_ADAPTER_FIRMWARE_VERSION, NETWORK_ADAPTER_DRIVER},
    {GROUP_PCI_DEVICE, kDevice, "PCI device", {PCI_DEVICE_DEVICE_NAME, PCI_DEVICE_NAME}, PCI_DEVICE_REVISION, PCI_DEVICE_VENDOR_NAME, 0, PCI_DEVICE_DRIVER},
    {GROUP_USB_DEVICE, kDevice, "USB device", {USB_DEVICE_PRODUCT}, 0, USB_DEVICE_MANUFACTURER, 0, USB_DEVICE_DRIVER},
    {GROUP_VIDEO, kDevice, "Graphics adapter", {VIDEO_ADAPTER_NAME}, 0, 0, VIDEO_BIOS_VERSION, VIDEO_DRIVER},
    {GROUP_MONITOR, kDevice, "Monitor", {MONITOR_NAME}, 0, MONITOR_MANUFACTURER_CODENAME, 0, 0},
    {GROUP_BATTERY, kDevice, "Battery", {BATTERY_MODEL, BATTERY_NAME}, 0, BATTERY_MANUFACTURER, 0, 0},
    {GROUP_TPM, kDevice, "TPM", {TPM_NAME}, TPM_VERSION, TPM_MANUFACTURER, 0, 0},
    {GROUP_PRINTER, kDevice, "Printer", {PRINTER_NAME}, 0, 0, 0, 0},
    {GROUP_MODEM, kDevice, "Modem", {MODEM_DESCRIPTION}, 0, MODEM_MANUFACTURER, 0, MODEM_DRIVER},
};
// clang-format on

constexpr uint32_t kHeadGroups[] = {GROUP_COMPONENTID, GROUP_OPERATING_SYSTEM, GROUP_UNIX_SYSTEM_PARAMS,
                                    GROUP_SCAN_INFO};

std::string dump(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// Of an attribute that a group may not have: a name, where placeholders are none; and what a device tells of itself.
std::string optionalText(const Row& row, uint32_t attribute)
{
    return attribute != 0 ? summary::makersText(row, {attribute}) : "";
}
std::string toldText(const Row& row, uint32_t attribute)
{
    return attribute != 0 ? textOf(row, attribute) : "";
}

// What in a group's rows is no part: empty memory slots, interfaces without hardware, and of the firmware's table what
// a group of its own tells today.
bool isPart(const GroupRows& group, const Row& row)
{
    switch (group.group->id) {
    case GROUP_MEMORY_MODULES:
        return summary::numberOf(row, MEMORY_MODULES_MODULE_SIZE_MB).value_or(0) != 0;
    case GROUP_NETWORK_ADAPTER: {
        const std::string kind = textOf(row, NETWORK_ADAPTER_KIND);
        return kind.empty() || kind == "Physical" || kind == "Wireless";
    }
    case GROUP_SMBIOS:
        return isFirstVersion(group);
    default:
        return true;
    }
}

// All values but those that change by themselves and row numbers.
Json propertiesOf(const GroupRows& group, const Row& row)
{
    Json properties = Json::array();
    for (const Value& value : row.values) {
        const bool isLasting = value.attribute == nullptr || (!value.attribute->isVolatile && value.name() != "Index");
        const std::string text = valueText(value);
        if (isLasting && !text.empty())
            properties.push_back(
                {{"name", "invhw:" + std::string(group.name()) + ':' + std::string(value.name())}, {"value", text}});
    }
    return properties;
}

void set(Json& component, const char* member, const std::string& text)
{
    if (!text.empty())
        component[member] = text;
}

void setMaker(Json& component, const std::string& name)
{
    if (!name.empty())
        component["manufacturer"] = {{"name", name}};
}

// What names the thing in every report of the machine: the first attributes that pair rows in a diff and that the row
// has, else its keys but for numbers of rows.
std::string referenceOf(const GroupRows& group, const Row& row)
{
    std::string reference(group.name());
    for (const PairingDef& pairing : group.group->pairing) {
        std::string names;
        bool isWhole = true;
        for (const uint32_t id : pairing.ids)
            if (id != 0) {
                const std::string text = textOf(row, id);
                isWhole = isWhole && !isPlaceholder(text);
                names += '/' + text;
            }
        if (isWhole)
            return reference + names;
    }
    for (const Value& value : row.values)
        if (isKey(group, value) && !value.attribute->isVolatile &&
            (group.group->keys.size() == 1 || value.name() != "Index"))
            reference += '/' + valueText(value);
    return reference;
}

std::string driverReference(const std::string& name)
{
    return "Driver/" + name;
}

bool isLibrary(const Row& row)
{
    const std::string category = textOf(row, SOFTWARE_PACKAGES_CATEGORY);
    const std::string section = category.substr(category.rfind('/') + 1); // "contrib/libs"
    return section == "libs" || section == "oldlibs" || section == "libdevel" ||
           textOf(row, SOFTWARE_PACKAGES_NAME).starts_with("lib");
}

// A UUID whose bits follow from a digest (RFC 9562, version 8).
std::string uuidOfDigest(const std::string& digest)
{
    std::string digits = digest.substr(0, 32);
    digits[12] = '8';
    digits[16] = "89ab"[parseNumber<unsigned>(std::string_view(digits).substr(16, 1), 16).value_or(0) & 3U];
    for (const size_t place : {8U, 13U, 18U, 23U})
        digits.insert(place, 1, '-');
    return digits;
}

Json machineComponent(const Report& rows)
{
    const Row& component = firstRow(rows, GROUP_COMPONENTID);
    std::string name = summary::modelName(rows);
    if (name.empty())
        name = summary::machineName(rows);
    Json machine = {{"type", kDevice}, {"bom-ref", "Machine"}, {"name", name.empty() ? "Machine" : name}};
    setMaker(machine, optionalText(component, COMPONENTID_MANUFACTURER));
    set(machine, "version", optionalText(component, COMPONENTID_VERSION));
    Json properties = Json::array();
    for (const uint32_t id : {uint32_t{GROUP_COMPONENTID}, uint32_t{GROUP_UNIX_SYSTEM_PARAMS}})
        if (const GroupRows* group = rows.find(id))
            for (const Json& property : propertiesOf(*group, group->rows.front()))
                properties.push_back(property);
    if (!properties.empty())
        machine["properties"] = properties;
    return machine;
}

// The scan's time, where its zone is known: the form has no other.
std::string timestampOf(const Report& rows)
{
    return rows.date && rows.date->offsetSeconds ? rfc3339(*rows.date) : "";
}
} // namespace

void BomHead::header(const Header& header)
{
    rows_.program = header.program;
    rows_.date = header.date;
}

void BomHead::row(const GroupRows& group, Row& row, const RowLines&)
{
    constexpr size_t kMostModules = 10'000;
    if (group.group == nullptr)
        return;
    const uint32_t id = group.group->id;
    if (id == GROUP_KERNEL_MODULE && row.find(KERNEL_MODULE_VERSION) != nullptr &&
        moduleVersions_.size() < kMostModules)
        moduleVersions_.emplace(textOf(row, KERNEL_MODULE_NAME), textOf(row, KERNEL_MODULE_VERSION));
    if (std::find(std::begin(kHeadGroups), std::end(kHeadGroups), id) == std::end(kHeadGroups) ||
        rows_.find(id) != nullptr)
        return;
    rows_.groups.push_back({group.group, {}, group.version, {row}});
}

Distribution BomHead::distribution() const
{
    const Row& system = firstRow(rows_, GROUP_OPERATING_SYSTEM);
    return {textOf(system, OPERATING_SYSTEM_DISTRIBUTION_ID), textOf(system, OPERATING_SYSTEM_VERSION_ID)};
}

std::string BomHead::moduleVersion(const std::string& name) const
{
    const auto found = moduleVersions_.find(name);
    return found != moduleVersions_.end() ? found->second : "";
}

void BomParts::add(const std::string& component)
{
    components_ << (written_++ == 0 ? "\n" : ",\n") << component;
    digest_ = sha256(digest_ + component);
}

// References of forged reports may be the same; those of others are not.
std::string BomParts::uniqueReference(const std::string& reference)
{
    const uint64_t before = references_[std::hash<std::string>()(reference)]++;
    return before == 0 ? reference : reference + '#' + std::to_string(before + 1);
}

void BomParts::addDependency(const std::string& reference, const std::string& on)
{
    dependencies_ << (dependents_++ == 0 ? "\n" : ",\n")
                  << dump({{"ref", reference}, {"dependsOn", Json::array({on})}});
}

void BomParts::addDevice(const GroupRows& group, const Row& row, const PartGroup& part)
{
    std::string name;
    for (const uint32_t attribute : part.names)
        if (name.empty())
            name = optionalText(row, attribute);
    const std::string reference = uniqueReference(referenceOf(group, row));
    Json component = {{"type", part.type}, {"bom-ref", reference}};
    setMaker(component, optionalText(row, part.maker));
    component["name"] = name.empty() ? part.name : name;
    set(component, "version", toldText(row, part.version));
    if (const std::string firmware = toldText(row, part.firmware); !firmware.empty())
        component["components"] = Json::array({Json{{"type", kFirmware},
                                                    {"bom-ref", uniqueReference(reference + "/Firmware")},
                                                    {"name", component["name"].get<std::string>() + " firmware"},
                                                    {"version", firmware}}});
    if (Json properties = propertiesOf(group, row); !properties.empty())
        component["properties"] = std::move(properties);
    add(dump(component));
    constexpr size_t kMostDrivers = 10'000;
    const std::string driver = toldText(row, part.driver);
    if (driver.empty() || (drivers_.size() >= kMostDrivers && drivers_.count(driver) == 0))
        return;
    drivers_.insert(driver);
    addDependency(reference, driverReference(driver));
}

void BomParts::addPackage(const GroupRows& group, const Row& row)
{
    const std::string url = packageUrl(row, distribution_);
    if (url.empty())
        return;
    Json component = {{"type", isLibrary(row) ? "library" : "application"}, {"bom-ref", uniqueReference(url)}};
    set(component, "publisher", textOf(row, SOFTWARE_PACKAGES_VENDOR));
    component["name"] = textOf(row, SOFTWARE_PACKAGES_NAME);
    set(component, "version", packageVersion(row));
    component["purl"] = url;
    if (Json properties = propertiesOf(group, row); !properties.empty())
        component["properties"] = std::move(properties);
    add(dump(component));
}

void BomParts::row(const GroupRows& group, Row& row, const RowLines&)
{
    if (group.group == nullptr)
        return;
    if (group.group->id == GROUP_SOFTWARE_PACKAGES) {
        addPackage(group, row);
        return;
    }
    const auto part = std::find_if(std::begin(kParts), std::end(kParts),
                                   [&](const PartGroup& each) { return each.group == group.group->id; });
    if (part != std::end(kParts) && isPart(group, row))
        addDevice(group, row, *part);
}

void BomParts::end()
{
    for (const std::string& driver : drivers_) {
        Json component = {{"type", "device-driver"}, {"bom-ref", driverReference(driver)}, {"name", driver}};
        set(component, "version", head_.moduleVersion(driver));
        add(dump(component));
    }
}

void beginBom(const BomHead& head, const BomParts& parts, std::ostream& out)
{
    const Report& rows = head.rows();
    const Json machine = machineComponent(rows);
    const std::string timestamp = timestampOf(rows);
    const std::string program = rows.program.empty() ? "invhw" : rows.program;
    const size_t blank = program.rfind(' ');
    Json tool = {{"type", "application"}, {"name", program.substr(0, blank)}};
    if (blank != std::string::npos)
        tool["version"] = program.substr(blank + 1);
    Json metadata = Json::object();
    set(metadata, "timestamp", timestamp);
    metadata["tools"] = {{"components", Json::array({tool})}};
    metadata["component"] = machine;
    out << "{\n\"$schema\": \"http://cyclonedx.org/schema/bom-1.6.schema.json\",\n\"bomFormat\": \"CycloneDX\",\n"
           "\"specVersion\": \"1.6\",\n\"serialNumber\": \"urn:uuid:"
        << uuidOfDigest(sha256(parts.digest() + dump(machine)))
        << "\",\n\"version\": 1,\n\"metadata\": " << dump(metadata) << ",\n\"components\": [";
}

void middleOfBom(std::ostream& out)
{
    out << "\n],\n\"dependencies\": [";
}

void endBom(std::ostream& out)
{
    out << "\n]\n}\n";
}
} // namespace report
