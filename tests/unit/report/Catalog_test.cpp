#include "report/Catalog.h"

#include <memory>
#include <set>

#include <gtest/gtest.h>

#include "com/VexUtil.h"
#include "report/catalog/AttributeIds.h"
#include "report/catalog/SharedTexts.h"
#include "scanner/XmlReport.h"

using report::Attribute;
using report::catalog;
using report::FIRST_ADDED_GROUP_ID;
using report::FIRST_ADDED_ID;
using report::Group;

namespace
{
size_t lengthOf(const vexAttribDef* rows)
{
    size_t count = 0;
    while (rows[count].id != VEX_END)
        ++count;
    return count;
}

const Attribute& attribute(uint32_t group, uint32_t id)
{
    return *report::findGroup(group)->find(id);
}

// Numbers that are written whole whatever their size.
bool isCountedIn64Bits(std::string_view name)
{
    return name.ends_with(" Bytes") || name.ends_with("Inodes") || name == "Start Sector";
}
} // namespace

TEST(Catalog, holdsEveryGroupOfTheModel)
{
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group) {
        SCOPED_TRACE(group->name);
        const Group* found = report::findGroup(group->id);
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->name, group->name);
        EXPECT_EQ(found->version, group->version + 1);
    }
}

TEST(Catalog, holdsTheModelsAttributesInItsOrderBeforeThoseAdded)
{
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group) {
        SCOPED_TRACE(group->name);
        const std::vector<Attribute>& attributes = report::findGroup(group->id)->attributes;
        const size_t count = lengthOf(group->attributes);
        ASSERT_GE(attributes.size(), count);
        for (size_t i = 0; i < count; ++i) {
            EXPECT_EQ(attributes[i].id, group->attributes[i].id);
            EXPECT_EQ(attributes[i].name, group->attributes[i].name);
            EXPECT_EQ(attributes[i].type, group->attributes[i].type);
            EXPECT_GE(attributes[i].maxLength, group->attributes[i].maxLength);
        }
        for (size_t i = count; i < attributes.size(); ++i)
            EXPECT_EQ(attributes[i].id, FIRST_ADDED_ID + i - count);
    }
}

TEST(Catalog, numbersTheAttributesOfItsOwnGroupsWithoutGaps)
{
    for (const Group& group : catalog()) {
        if (group.id < FIRST_ADDED_GROUP_ID)
            continue;
        SCOPED_TRACE(group.name);
        EXPECT_EQ(group.version, 1U);
        for (size_t i = 0; i < group.attributes.size(); ++i)
            EXPECT_EQ(group.attributes[i].id, FIRST_ADDED_ID + i);
    }
}

TEST(Catalog, namesGroupsAndAttributesOnce)
{
    std::set<std::string> groupNames, groupElements;
    std::set<uint32_t> groupIds;
    for (const Group& group : catalog()) {
        SCOPED_TRACE(group.name);
        EXPECT_TRUE(groupNames.insert(group.name).second);
        EXPECT_TRUE(groupElements.insert(group.element).second);
        EXPECT_TRUE(groupIds.insert(group.id).second);
        std::set<std::string> names, elements;
        for (const Attribute& attribute : group.attributes) {
            SCOPED_TRACE(attribute.name);
            EXPECT_TRUE(names.insert(attribute.name).second);
            EXPECT_TRUE(elements.insert(attribute.element).second);
            EXPECT_FALSE(attribute.element.empty());
        }
    }
}

TEST(Catalog, findsGroupsAndAttributes)
{
    for (size_t i = 0; i < catalog().size(); ++i) {
        const Group& group = catalog()[i];
        EXPECT_EQ(group.position, i);
        EXPECT_EQ(report::findGroup(group.id), &group);
        EXPECT_EQ(report::findGroup(group.element), &group);
        EXPECT_EQ(report::findGroupByAnyName(group.name), &group);
        for (size_t k = 0; k < group.attributes.size(); ++k) {
            EXPECT_EQ(group.attributes[k].position, k);
            EXPECT_EQ(group.find(group.attributes[k].id), &group.attributes[k]);
            EXPECT_EQ(group.find(group.attributes[k].element), &group.attributes[k]);
        }
    }
    EXPECT_EQ(report::findGroup(9999U), nullptr);
    EXPECT_EQ(report::findGroup("IP Address"), nullptr);
    EXPECT_EQ(report::findGroupByAnyName("ipaddress"), nullptr);
}

TEST(Catalog, keepsInvhwsOrderOfGroups)
{
    constexpr uint32_t invhw[] = {
        GROUP_COMPONENTID, GROUP_PROCESSOR,  GROUP_MEMORY,          GROUP_MEMORY_MODULES, GROUP_OPERATING_SYSTEM,
        GROUP_STORAGE,     GROUP_IP_ADDRESS, GROUP_NETWORK_ADAPTER, GROUP_REGIONAL,       GROUP_UNIX_SYSTEM_PARAMS,
        GROUP_SCAN_INFO,   GROUP_PARTITION,  GROUP_SMBIOS,          GROUP_PCI_DEVICE,     GROUP_LPAR};
    size_t last = 0;
    for (const uint32_t id : invhw) {
        const size_t position = report::findGroup(id)->position;
        EXPECT_TRUE(id == invhw[0] || position > last) << id;
        last = position;
    }
    EXPECT_EQ(catalog().front().id, static_cast<uint32_t>(GROUP_COMPONENTID));
    EXPECT_EQ(catalog().back().id, static_cast<uint32_t>(GROUP_SCAN_STATUS));
}

TEST(Catalog, countsBytesInodesAndSectorsIn64Bits)
{
    size_t count = 0;
    for (const Group& group : catalog())
        for (const Attribute& attribute : group.attributes) {
            EXPECT_EQ(attribute.type == VEX_UQUAD, isCountedIn64Bits(attribute.name))
                << group.name << ": " << attribute.name;
            count += attribute.type == VEX_UQUAD;
        }
    EXPECT_EQ(count, 10U);
}

TEST(Catalog, writesEveryWordOfAListWhole)
{
    for (const Group& group : catalog())
        for (const Attribute& attribute : group.attributes)
            for (const char* const* word = attribute.words; word != nullptr && *word != nullptr; ++word)
                EXPECT_LE(std::string_view(*word).size(), attribute.maxLength) << *word;
}

TEST(Catalog, widensTexts)
{
    EXPECT_EQ(attribute(GROUP_SERVICE_INFO, SERVICE_INFO_SERVICE_NAME).maxLength, 255U);
    EXPECT_EQ(attribute(GROUP_SOFTWARE_PACKAGES, SOFTWARE_PACKAGES_PACKAGE_ID).maxLength, 255U);
    EXPECT_EQ(attribute(GROUP_SOFTWARE_PACKAGES, SOFTWARE_PACKAGES_VERSION).maxLength, 128U);
    EXPECT_EQ(attribute(GROUP_SOFTWARE_PACKAGES, SOFTWARE_PACKAGES_REVISION).maxLength, 128U);
    EXPECT_EQ(attribute(GROUP_PARTITION, PARTITION_FS_ACCESS_POINT).maxLength, 4096U);
    EXPECT_EQ(attribute(GROUP_PARTITION, PARTITION_FS_MOUNT_POINT).maxLength, 4096U);
    EXPECT_EQ(attribute(GROUP_PARTITION, PARTITION_DEVICE_NAME).maxLength, 64U); // not widened
}

TEST(Catalog, knowsSocketsByTheirUpgradeCode)
{
    const Attribute& interface = attribute(GROUP_PROCESSOR, PROCESSOR_INTERFACE);
    EXPECT_EQ(interface.enums, nullptr);
    EXPECT_STREQ(report::enumText(interface.codeTexts, 0x2B), "Socket LGA2011-3");
    EXPECT_STREQ(report::enumText(interface.codeTexts, 0x3F), "Socket LGA4677");
    EXPECT_STREQ(report::enumText(interface.codeTexts, 0x4B), "Socket SP6");
    EXPECT_STREQ(report::enumText(interface.codeTexts, 0x50), "Socket LGA7529");
    EXPECT_EQ(report::enumText(interface.codeTexts, 0x7F), nullptr);
    for (const vexEnumDef* code = PROCESSOR_INTERFACE_ENUM_DEF; code->value != VEX_END; ++code)
        EXPECT_STREQ(code->value == 0 ? "" : report::enumText(interface.codeTexts, code->value), code->text);
    for (const vexEnumDef* code = interface.codeTexts; code->value != VEX_END; ++code)
        EXPECT_LE(std::string_view(code->text).size(), interface.maxLength);
}

TEST(Catalog, knowsChassisTypesAsTheModelDoes)
{
    for (const vexEnumDef* type = VEX_ATTRIB_SMBIOS_ENCLOSURE_TYPE_ENUM_DEF; type->value != VEX_END; ++type)
        EXPECT_STREQ(report::enumText(report::CHASSIS_TYPE_ENUM_DEF, type->value), type->text);
    for (const vexEnumDef* type = report::CHASSIS_TYPE_ENUM_DEF; type->value != VEX_END; ++type)
        EXPECT_STREQ(report::enumText(attribute(GROUP_COMPONENTID, COMPONENTID_CHASSIS_TYPE).enums, type->value),
                     type->text);
    EXPECT_STREQ(report::enumText(attribute(GROUP_SYSTEM_ENCLOSURE, SYSTEM_ENCLOSURE_CHASSIS_TYPE).enums, 31),
                 "Convertible");
}

TEST(Catalog, enumerationTextsFindTheirValue)
{
    const vexEnumDef* enums = attribute(GROUP_STORAGE, STORAGE_ROTATIONAL).enums;
    ASSERT_NE(report::findEnumText(enums, "Yes"), nullptr);
    EXPECT_EQ(report::findEnumText(enums, "Yes")->value, 1U);
    EXPECT_EQ(report::findEnumText(enums, "No")->value, 0U);
    EXPECT_EQ(report::findEnumText(enums, "yes"), nullptr);
    EXPECT_EQ(report::findEnumText(nullptr, "Yes"), nullptr);
}

TEST(Catalog, makesElementNames)
{
    EXPECT_EQ(report::elementName("Size Bytes"), "SizeBytes");
    EXPECT_EQ(report::elementName("Height (U)"), "Height");
    EXPECT_EQ(report::elementName("36-bit Page Size Extension"), "_36-bitPageSizeExtension");
    EXPECT_EQ(report::elementName("Fast Floating Point Save/Restore"), "FastFloatingPointSaveRestore");
    EXPECT_EQ(report::elementName(""), "");
    EXPECT_EQ(attribute(GROUP_SYSTEM_ENCLOSURE, SYSTEM_ENCLOSURE_HEIGHT).element, "Height");
    EXPECT_EQ(attribute(GROUP_SYSTEM_ENCLOSURE, SYSTEM_ENCLOSURE_HEIGHT).unit, "U");
}

TEST(Catalog, namesElementsAsInvhwDoes)
{
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group) {
        EXPECT_EQ(report::elementName(group->name), std::unique_ptr<char[]>(spaceOut(group->name)).get());
        for (const vexAttribDef* row = group->attributes; row->id != VEX_END; ++row)
            EXPECT_EQ(report::elementName(row->name), std::unique_ptr<char[]>(spaceOut(row->name)).get());
    }
}
