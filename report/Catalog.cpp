#include "report/Catalog.h"

#include <algorithm>
#include <unordered_map>

#include "com/VexUtil.h"
#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// The groups in report order: those of invhw stand in its order.
constexpr const GroupDef* kGroups[] = {
    &COMPONENTID_GROUP,
    &PROCESSOR_GROUP,
    &PROCESSOR_VULNERABILITY_GROUP,
    &NUMA_NODE_GROUP,
    &MEMORY_GROUP,
    &MEMORY_MODULES_GROUP,
    &OPERATING_SYSTEM_GROUP,
    &STORAGE_GROUP,
    &DISK_PARTITION_GROUP,
    &LOGICAL_DRIVE_GROUP,
    &IP_ADDRESS_GROUP,
    &ROUTE_GROUP,
    &NETWORK_ADAPTER_GROUP,
    &REGIONAL_GROUP,
    &UNIX_SYSTEM_PARAMS_GROUP,
    &PC_SYSTEM_PARAMS_GROUP,
    &SCAN_INFO_GROUP,
    &PARTITION_GROUP,
    &SMBIOS_GROUP,
    &SYSTEM_ENCLOSURE_GROUP,
    &FIRMWARE_GROUP,
    &FIRMWARE_RESOURCE_GROUP,
    &TPM_GROUP,
    &PCI_DEVICE_GROUP,
    &USB_DEVICE_GROUP,
    &VIDEO_GROUP,
    &MONITOR_GROUP,
    &KEYBOARD_GROUP,
    &POINTING_DEVICE_GROUP,
    &SERIAL_PORT_GROUP,
    &PARALLEL_PORT_GROUP,
    &PRINTER_GROUP,
    &MODEM_GROUP,
    &BATTERY_GROUP,
    &SENSOR_GROUP,
    &KERNEL_MODULE_GROUP,
    &SOFTWARE_PACKAGES_GROUP,
    &INSTALLED_PATCHES_GROUP,
    &SERVICE_INFO_GROUP,
    &USER_ACCOUNT_INFO_GROUP,
    &IPX_ADDRESS_GROUP,
    &LPAR_GROUP,
    &SITE_GROUP,
    &MACHINE_IDENTITY_GROUP,
    &SCAN_STATUS_GROUP,
};

// The row of com/catalog that an attribute extends, or null.
const vexAttribDef* originalOf(const vexGroupDef* group, uint32_t id)
{
    if (group == nullptr || id >= FIRST_ADDED_ID)
        return nullptr;
    return getAttribDefinitionFromId(group, id);
}

void setMarks(Attribute* attribute, uint8_t marks)
{
    attribute->isVolatile = (marks & VOLATILE) != 0;
    attribute->isIdentifying = (marks & IDENTIFYING) != 0;
    attribute->isYesNo = (marks & YES_NO) != 0;
    attribute->isVolatileIfDynamic = (marks & VOLATILE_IF_DYNAMIC) != 0;
    attribute->isIdentifyingIfAddress = (marks & IDENTIFYING_IF_ADDRESS) != 0;
    attribute->isIdentifyingIfHostOrUser = (marks & IDENTIFYING_IF_HOST_OR_USER) != 0;
}

Attribute makeAttribute(const AttributeDef& row, const vexGroupDef* originalGroup, size_t position)
{
    Attribute attribute;
    const vexAttribDef* original = originalOf(originalGroup, row.id);
    attribute.id = row.id;
    attribute.position = position;
    attribute.name = original != nullptr ? original->name : row.name != nullptr ? row.name : "";
    attribute.element = elementName(attribute.name);
    attribute.type = static_cast<VexType>(original != nullptr ? original->type : row.type);
    attribute.maxLength = row.maxLength != 0 || original == nullptr ? row.maxLength : original->maxLength;
    attribute.unit = row.unit;
    const vexEnumDef* const enums = row.enums != nullptr || original == nullptr ? row.enums : original->enums;
    (attribute.type == VEX_ULONG ? attribute.enums : attribute.codeTexts) = enums;
    attribute.words = row.words;
    setMarks(&attribute, row.marks);
    attribute.source = row.source;
    return attribute;
}

bool isAmong(uint32_t id, std::span<const uint32_t> ids)
{
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

Group makeGroup(const GroupDef& row, size_t position)
{
    Group group;
    const vexGroupDef* original = row.id < FIRST_ADDED_GROUP_ID ? getGroupDefinitionFromId(row.id) : nullptr;
    group.id = row.id;
    group.position = position;
    group.name = original != nullptr ? original->name : row.name;
    group.element = elementName(group.name);
    group.version = row.version;
    group.keys.assign(row.keys.begin(), row.keys.end());
    if (group.keys.empty() && original != nullptr)
        group.keys.assign(original->keys, original->keys + original->numKeys);
    group.pairing = row.pairing;
    group.source = row.source;
    const std::span<const uint32_t> firstKeys(original != nullptr ? original->keys : nullptr,
                                              original != nullptr ? original->numKeys : 0);
    for (const AttributeDef& def : row.attributes) {
        Attribute attribute = makeAttribute(def, original, group.attributes.size());
        attribute.isKey = isAmong(def.id, group.keys);
        attribute.isFirstKey = isAmong(def.id, firstKeys);
        group.attributes.push_back(std::move(attribute));
    }
    return group;
}

std::vector<Group> makeCatalog()
{
    std::vector<Group> groups;
    for (const GroupDef* row : kGroups)
        groups.push_back(makeGroup(*row, groups.size()));
    return groups;
}

constexpr bool isLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':';
}

constexpr bool isNameCharacter(char c)
{
    return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '-';
}
} // namespace

const std::vector<Group>& catalog()
{
    static const std::vector<Group> groups = makeCatalog();
    return groups;
}

const Attribute* Group::find(uint32_t attributeId) const
{
    for (const Attribute& attribute : attributes)
        if (attribute.id == attributeId)
            return &attribute;
    return nullptr;
}

const Attribute* Group::find(std::string_view attributeElement) const
{
    for (const Attribute& attribute : attributes)
        if (attribute.element == attributeElement)
            return &attribute;
    return nullptr;
}

const Group* findGroup(uint32_t id)
{
    for (const Group& group : catalog())
        if (group.id == id)
            return &group;
    return nullptr;
}

const Group* findGroup(std::string_view element)
{
    static const std::unordered_map<std::string_view, const Group*> byElement = [] {
        std::unordered_map<std::string_view, const Group*> map;
        for (const Group& group : catalog())
            map.emplace(group.element, &group);
        return map;
    }();
    const auto found = byElement.find(element);
    return found != byElement.end() ? found->second : nullptr;
}

const Group* findGroupByAnyName(std::string_view name)
{
    for (const Group& group : catalog())
        if (group.name == name || group.element == name)
            return &group;
    return nullptr;
}

const char* enumText(const vexEnumDef* enums, uint64_t value)
{
    for (; enums != nullptr && enums->value != VEX_END; ++enums)
        if (enums->value == value)
            return enums->text;
    return nullptr;
}

const vexEnumDef* findEnumText(const vexEnumDef* enums, std::string_view text)
{
    for (; enums != nullptr && enums->value != VEX_END; ++enums)
        if (enums->text == text)
            return enums;
    return nullptr;
}

std::string elementName(std::string_view name)
{
    name = name.substr(0, name.find(" ("));
    std::string element;
    for (const char c : name) {
        if (element.empty()) {
            if (c >= '0' && c <= '9')
                element = std::string("_") + c;
            else if (isLetter(c))
                element = c;
        } else if (isNameCharacter(c)) {
            element += c;
        }
    }
    return element;
}
} // namespace report
