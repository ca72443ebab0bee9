#include "com/VexCatalog.h"

#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

#include "com/VexAttribIds.h"
#include "com/VexUtil.h"

namespace
{
size_t rowsOf(const vexAttribDef* table)
{
    size_t count = 0;
    while (table[count].id != VEX_END)
        ++count;
    return count;
}

size_t rowsOf(const vexEnumDef* table)
{
    size_t count = 0;
    while (table[count].value != VEX_END)
        ++count;
    return count;
}

size_t groupCount()
{
    size_t count = 0;
    while (GROUPS_DEF[count].id != VEX_END)
        ++count;
    return count;
}

// The text of value in an enumeration; null when it is not listed.
const char* textOf(const vexEnumDef* table, uint32_t value)
{
    for (; table->value != VEX_END; ++table)
        if (table->value == value)
            return table->text;
    return nullptr;
}

constexpr struct {
    uint32_t id;
    const char* name;
    size_t attributes;
    uint32_t mask;
    const vexAttribDef* table;
    const uint32_t* keys;
    uint32_t numKeys;
} kGroups[] = {
    {1, "ComponentID", 7, 0x2, COMPONENTID_ATTRS_DEF, nullptr, 0},
    {2, "Processor", 42, 0x4, PROCESSOR_ATTRS_DEF, PROCESSOR_KEYS_DEF, 2},
    {3, "Memory", 9, 0x8, MEMORY_ATTRS_DEF, nullptr, 0},
    {4, "Operating System", 16, 0x10, OPER_SYS_ATTRS_DEF, nullptr, 0},
    {5, "Storage", 11, 0x20, STORAGE_ATTRS_DEF, STORAGE_KEYS_DEF, 2},
    {6, "IP Address", 10, 0x40, IP_ADDR_ATTRS_DEF, IP_ADDRESS_KEYS_DEF, 1},
    {7, "Network Adapter", 9, 0x80, NET_ADPTR_ATTRS_DEF, NETWORK_ADAPTER_KEYS_DEF, 1},
    {8, "Disk Partition", 6, 0x100, DSK_PART_ATTRS_DEF, DISK_PARTITION_KEYS_DEF, 1},
    {9, "Pointing Device", 8, 0x200, POINT_DEV_ATTRS_DEF, POINTING_DEVICE_KEYS_DEF, 2},
    {10, "Keyboard", 6, 0x400, KEYBOARD_ATTRS_DEF, nullptr, 0},
    {11, "Logical Drive", 6, 0x800, LOG_DRIVE_ATTRS_DEF, LOGICAL_DRIVE_KEYS_DEF, 1},
    {12, "IPX Address", 6, 0x1000, IPX_ADDR_ATTRS_DEF, IPX_ADDRESS_KEYS_DEF, 1},
    {13, "Video", 12, 0x2000, VIDEO_ATTRS_DEF, VIDEO_KEYS_DEF, 2},
    {14, "Printer", 12, 0x4000, PRINTER_ATTRS_DEF, PRINTER_KEYS_DEF, 2},
    {15, "Regional", 6, 0x8000, REGIONAL_ATTRS_DEF, nullptr, 0},
    {16, "System Enclosure", 5, 0x10000, ENCLOSURE_ATTRS_DEF, nullptr, 0},
    {19, "UNIX System Params", 4, 0x20000, UNIX_PAR_ATTRS_DEF, nullptr, 0},
    {20, "Scan Info", 6, 0x40000, SCAN_INFO_ATTRS_DEF, nullptr, 0},
    {21, "PC System Params", 5, 0x80000, PC_PAR_ATTRS_DEF, nullptr, 0},
    {22, "Serial Port", 2, 0x100000, SERIAL_PORT_ATTRS_DEF, nullptr, 0},
    {23, "Parallel Port", 2, 0x200000, PARALLEL_PORT_ATTRS_DEF, nullptr, 0},
    {24, "SMBIOS", 20, 0x400000, SMBIOS_ATTRS_DEF, nullptr, 0},
    {25, "Software Packages", 6, 0x800000, INSTALLED_PKGS_ATTRS_DEF, nullptr, 0},
    {26, "Installed Patches", 8, 0x1000000, INSTALLED_PATCH_ATTRS_DEF, INSTALLED_PATCH_KEYS_DEF, 2},
    {27, "Partition", 10, 0x4000000, PART_ATTRS_DEF, PARTITION_KEYS_DEF, 3},
    {28, "USB Device", 16, 0x2000000, USB_DEVICE_ATTRS_DEF, USB_DEVICE_KEYS_DEF, 2},
    {29, "PCI Device", 3, 0x8000000, PCI_DEVICE_ATTRS_DEF, PCI_DEVICE_KEYS_DEF, 2},
    {30, "Modem", 12, 0x10000000, MODEM_ATTRS_DEF, MODEM_KEYS_DEF, 2},
    {31, "Memory Modules", 6, 0x20000000, MEMORY_MODULES_ATTRS_DEF, MEMORY_MODULES_KEYS_DEF, 1},
    {32, "Monitor", 13, 0x40000000, MONITOR_ATTRS_DEF, MONITOR_KEYS_DEF, 2},
    {34, "Lpar", 5, 0x80000000, LPAR_ATTRS_DEF, nullptr, 0},
    {35, "Service Info", 10, 0xa, SERVICE_INFO_ATTRS_DEF, SERVICE_INFO_KEYS_DEF, 1},
    {36, "User Account Info", 9, 0xb, USER_ACCOUNT_INFO_ATTRS_DEF, USER_ACCOUNT_INFO_KEYS_DEF, 2},
};

constexpr struct {
    const char* name;
    const vexEnumDef* table;
    size_t rows;
} kEnums[] = {
    {"VEX_ATTRIB_SMBIOS_ENCLOSURE_TYPE_ENUM_DEF", VEX_ATTRIB_SMBIOS_ENCLOSURE_TYPE_ENUM_DEF, 25},
    {"HWSEC_POP_ENUM_DEF", HWSEC_POP_ENUM_DEF, 4},
    {"STORAGE_SECURITY_ENABLED_ENUM_DEF", STORAGE_SECURITY_ENABLED_ENUM_DEF, 3},
    {"PART_TYPE_ENUM_DEF", PART_TYPE_ENUM_DEF, 4},
    {"PART_MEDIA_TYPE_ENUM_DEF", PART_MEDIA_TYPE_ENUM_DEF, 7},
    {"STORAGE_TYPE_ENUM_DEF", STORAGE_TYPE_ENUM_DEF, 68},
    {"OS_TYPE_ENUM_DEF", OS_TYPE_ENUM_DEF, 67},
    {"PROCESSOR_FAMILY_ENUM_DEF", PROCESSOR_FAMILY_ENUM_DEF, 126},
    {"REGIONAL_TZ_PLUS_MINUS", REGIONAL_TZ_PLUS_MINUS, 2},
    {"REGIONAL_TZ_DAYLIGHT", REGIONAL_TZ_DAYLIGHT, 2},
    {"PROCESSOR_INTERFACE_ENUM_DEF", PROCESSOR_INTERFACE_ENUM_DEF, 18},
    {"ADAPTER_TYPE_ENUM_DEF", ADAPTER_TYPE_ENUM_DEF, 18},
    {"POINTING_DEVICE_TYPE_ENUM_DEF", POINTING_DEVICE_TYPE_ENUM_DEF, 9},
    {"USB_DEVICE_CLASS_ENUM_DEF", USB_DEVICE_CLASS_ENUM_DEF, 11},
    {"USB_DEVICE_IS_HUB_ENUM_DEF", USB_DEVICE_IS_HUB_ENUM_DEF, 2},
    {"MODEM_DEVTYPE_ENUMS_DEF", MODEM_DEVTYPE_ENUMS_DEF, 4},
    {"FILE_SYSTEM_TYPE_ENUM_DEF", FILE_SYSTEM_TYPE_ENUM_DEF, 98},
};
} // namespace

TEST(CatalogLayout, recordsAreWordsAndPointersInOrder)
{
    const size_t pointer = sizeof(void*);
    EXPECT_EQ(offsetof(vexEnumDef, value), 0U);
    EXPECT_EQ(offsetof(vexEnumDef, text), pointer);
    EXPECT_EQ(sizeof(vexEnumDef), 2 * pointer);

    EXPECT_EQ(offsetof(vexAttribDef, id), 0U);
    EXPECT_EQ(offsetof(vexAttribDef, name), pointer);
    EXPECT_EQ(offsetof(vexAttribDef, type), 2 * pointer);
    EXPECT_EQ(offsetof(vexAttribDef, maxLength), 2 * pointer + 4);
    EXPECT_EQ(offsetof(vexAttribDef, enums), 2 * pointer + 8);
    EXPECT_EQ(sizeof(vexAttribDef), 3 * pointer + 8);

    EXPECT_EQ(offsetof(vexGroupDef, id), 0U);
    EXPECT_EQ(offsetof(vexGroupDef, name), pointer);
    EXPECT_EQ(offsetof(vexGroupDef, attributes), 2 * pointer);
    EXPECT_EQ(offsetof(vexGroupDef, keys), 3 * pointer);
    EXPECT_EQ(offsetof(vexGroupDef, numKeys), 4 * pointer);
    EXPECT_EQ(offsetof(vexGroupDef, version), 4 * pointer + 4);
    EXPECT_EQ(offsetof(vexGroupDef, debugMask), 4 * pointer + 8);
    EXPECT_EQ(sizeof(vexGroupDef), pointer == 4 ? 28U : 48U);
}

TEST(Catalog, hasThirtyThreeGroupsInOrder)
{
    ASSERT_EQ(groupCount(), 33U);
    ASSERT_EQ(std::size(kGroups), 33U);
    for (size_t i = 0; i < std::size(kGroups); ++i) {
        SCOPED_TRACE(kGroups[i].name);
        EXPECT_EQ(GROUPS_DEF[i].id, kGroups[i].id);
        EXPECT_STREQ(GROUPS_DEF[i].name, kGroups[i].name);
        EXPECT_EQ(GROUPS_DEF[i].attributes, kGroups[i].table);
        EXPECT_EQ(rowsOf(GROUPS_DEF[i].attributes), kGroups[i].attributes);
        EXPECT_EQ(GROUPS_DEF[i].keys, kGroups[i].keys);
        EXPECT_EQ(GROUPS_DEF[i].numKeys, kGroups[i].numKeys);
        EXPECT_EQ(GROUPS_DEF[i].version, 1U);
        EXPECT_EQ(GROUPS_DEF[i].debugMask, kGroups[i].mask);
    }
}

TEST(Catalog, groupTableEndsWithZeroFields)
{
    const vexGroupDef& end = GROUPS_DEF[groupCount()];
    EXPECT_EQ(end.name, nullptr);
    EXPECT_EQ(end.attributes, nullptr);
    EXPECT_EQ(end.keys, nullptr);
    EXPECT_EQ(end.numKeys, 0U);
    EXPECT_EQ(end.version, 0U);
    EXPECT_EQ(end.debugMask, 0U);
}

TEST(Catalog, attributeTablesEndWithZeroFields)
{
    for (const auto& group : kGroups) {
        const vexAttribDef& end = group.table[rowsOf(group.table)];
        EXPECT_EQ(end.name, nullptr) << group.name;
        EXPECT_EQ(end.type, 0U) << group.name;
        EXPECT_EQ(end.maxLength, 0U) << group.name;
        EXPECT_EQ(end.enums, nullptr) << group.name;
    }
}

TEST(Catalog, idsAndNamesAreUniqueWithinAGroup)
{
    for (const auto& group : kGroups) {
        std::set<uint32_t> ids;
        std::set<std::string> names;
        for (const vexAttribDef* attrib = group.table; attrib->id != VEX_END; ++attrib) {
            EXPECT_TRUE(ids.insert(attrib->id).second) << group.name << ": " << attrib->id;
            EXPECT_TRUE(names.insert(attrib->name).second) << group.name << ": " << attrib->name;
        }
    }
}

TEST(Catalog, attributeIdsAscendBarDhcpEnabled)
{
    for (const auto& group : kGroups) {
        for (const vexAttribDef* attrib = group.table; attrib[1].id != VEX_END; ++attrib) {
            if (attrib->id == IP_ADDRESS_DHCP_ENABLED && group.id == GROUP_IP_ADDRESS)
                EXPECT_EQ(attrib[1].id, 3U);
            else
                EXPECT_LT(attrib->id, attrib[1].id) << group.name;
        }
    }
    EXPECT_EQ(IP_ADDR_ATTRS_DEF[2].id, 9U);
}

TEST(Catalog, onlyTextsHaveAMaximumLength)
{
    for (const auto& group : kGroups)
        for (const vexAttribDef* attrib = group.table; attrib->id != VEX_END; ++attrib)
            EXPECT_EQ(attrib->type == VEX_STRING, attrib->maxLength != 0) << group.name << ": " << attrib->name;
}

TEST(Catalog, keysAreAttributesOfTheirGroup)
{
    const std::map<uint32_t, std::set<uint32_t>> expected = {
        {2, {1, 2}},  {5, {1, 2}},  {6, {2}},     {7, {2}},     {8, {1}},        {9, {1, 2}},  {11, {1}},
        {12, {1}},    {13, {1, 2}}, {14, {1, 2}}, {26, {1, 8}}, {27, {1, 7, 8}}, {28, {1, 2}}, {29, {1, 2}},
        {30, {1, 2}}, {31, {1}},    {32, {1, 2}}, {35, {1}},    {36, {1, 2}},
    };
    for (const auto& group : kGroups) {
        const std::set<uint32_t> keys(group.keys, group.keys + group.numKeys);
        const auto found = expected.find(group.id);
        EXPECT_EQ(keys, found == expected.end() ? std::set<uint32_t>() : found->second) << group.name;
        for (const uint32_t key : keys)
            EXPECT_NE(getAttribDefinitionFromId(getGroupDefinitionFromId(group.id), key), nullptr) << group.name;
    }
}

TEST(Catalog, enumerationsHaveTheirCountsEndAndUniqueValues)
{
    for (const auto& e : kEnums) {
        SCOPED_TRACE(e.name);
        ASSERT_EQ(rowsOf(e.table), e.rows);
        EXPECT_EQ(e.table[e.rows].text, nullptr);
        std::set<uint32_t> values;
        for (size_t i = 0; i < e.rows; ++i) {
            EXPECT_NE(e.table[i].text, nullptr);
            EXPECT_TRUE(values.insert(e.table[i].value).second) << e.table[i].value;
        }
    }
}

TEST(Catalog, enumerationValuesAscendBarTheSambaFileSystem)
{
    for (const auto& e : kEnums) {
        for (size_t i = 0; i + 1 < e.rows; ++i) {
            if (e.table == FILE_SYSTEM_TYPE_ENUM_DEF && e.table[i].value == 0x11A)
                EXPECT_EQ(e.table[i + 1].value, 0x105U);
            else
                EXPECT_LT(e.table[i].value, e.table[i + 1].value) << e.name;
        }
    }
}

TEST(Catalog, storageTypesHaveNo44AndKeepTheTrailingBlank)
{
    EXPECT_EQ(textOf(STORAGE_TYPE_ENUM_DEF, 0x44), nullptr);
    EXPECT_STREQ(textOf(STORAGE_TYPE_ENUM_DEF, 0x43), "Tape - DST Large");
    EXPECT_STREQ(textOf(STORAGE_TYPE_ENUM_DEF, 0x45), "Direct Access Storage Device");
    EXPECT_STREQ(textOf(STORAGE_TYPE_ENUM_DEF, 16), "Winchester Removable Disk ");
    EXPECT_STREQ(textOf(STORAGE_TYPE_ENUM_DEF, 17), "CD-ROM");
    EXPECT_STREQ(textOf(STORAGE_TYPE_ENUM_DEF, 22), "Magneto-Optical");
    EXPECT_STREQ(textOf(STORAGE_TYPE_ENUM_DEF, 29), "Floppy/Diskette");
    EXPECT_STREQ(textOf(STORAGE_TYPE_ENUM_DEF, 30), "Hard Disk");
}

TEST(Catalog, operatingSystemsThatMatterHaveTheirValues)
{
    EXPECT_STREQ(textOf(OS_TYPE_ENUM_DEF, 37), "LINUX");
    EXPECT_STREQ(textOf(OS_TYPE_ENUM_DEF, 67), "Linux PPC");
    EXPECT_STREQ(textOf(OS_TYPE_ENUM_DEF, 64), "Windows Millenium");
}

TEST(Catalog, processorFamiliesSpotChecks)
{
    const struct {
        uint32_t value;
        const char* text;
    } cases[] = {{1, "Other"},         {17, "Pentium III"},    {39, "Power PC 750"}, {40, nullptr},
                 {48, "Alpha Family"}, {49, "Alpah 21064"},    {101, "68030"},       {129, nullptr},
                 {185, "Pentium M"},   {200, "Qrm390 Family"}, {261, "SH-4"},        {350, "DSP"},
                 {415, "POWER5"}};
    for (const auto& c : cases)
        EXPECT_STREQ(textOf(PROCESSOR_FAMILY_ENUM_DEF, c.value), c.text) << c.value;
}

TEST(Catalog, processorInterfaceZeroIsAnEmptyText)
{
    EXPECT_STREQ(textOf(PROCESSOR_INTERFACE_ENUM_DEF, 0), "");
    EXPECT_STREQ(textOf(PROCESSOR_INTERFACE_ENUM_DEF, 14), "Socket A (Socket 462)");
}

TEST(Catalog, fileSystemsKeepTheirSpellings)
{
    size_t below100 = 0;
    for (const vexEnumDef* pair = FILE_SYSTEM_TYPE_ENUM_DEF; pair->value < 0x100; ++pair)
        ++below100;
    EXPECT_EQ(below100, 68U);
    EXPECT_STREQ(textOf(FILE_SYSTEM_TYPE_ENUM_DEF, 0x63), "UNIX-AT&T System V/386 | SCO UNIX");
    EXPECT_STREQ(textOf(FILE_SYSTEM_TYPE_ENUM_DEF, 0x80), "Minix < 1.4b");
    EXPECT_STREQ(textOf(FILE_SYSTEM_TYPE_ENUM_DEF, 0x83), "Linux native | Apple");
    EXPECT_STREQ(textOf(FILE_SYSTEM_TYPE_ENUM_DEF, 0x101), "Protable file system");
    EXPECT_STREQ(textOf(FILE_SYSTEM_TYPE_ENUM_DEF, 0x103), "extet-based file system");
    EXPECT_STREQ(textOf(FILE_SYSTEM_TYPE_ENUM_DEF, 0x11A), "samba file system");
    EXPECT_STREQ(textOf(FILE_SYSTEM_TYPE_ENUM_DEF, 0xFFFF), "UNKNOWN");
    EXPECT_EQ(textOf(FILE_SYSTEM_TYPE_ENUM_DEF, 0x0D), nullptr);
}

TEST(Catalog, namesThatReadersKnowAreKept)
{
    const vexGroupDef* processor = getGroupDefinitionFromId(GROUP_PROCESSOR);
    EXPECT_STREQ(getAttribNameFromId(processor, PROCESSOR_MMX), "MMX(tm) Techonlogy");
    EXPECT_EQ(getAttribDefinitionFromId(processor, PROCESSOR_INTERFACE)->type, VEX_STRING);
    EXPECT_EQ(getAttribDefinitionFromId(processor, PROCESSOR_INTERFACE)->enums, PROCESSOR_INTERFACE_ENUM_DEF);
    EXPECT_STREQ(getAttribNameFromId(getGroupDefinitionFromId(GROUP_REGIONAL), REGIONAL_LOCALE), "Local");
    const vexAttribDef* modemType = getAttribDefinitionFromId(getGroupDefinitionFromId(30), 6);
    EXPECT_EQ(modemType->type, VEX_STRING);
    EXPECT_EQ(modemType->enums, MODEM_DEVTYPE_ENUMS_DEF);
}

TEST(GroupLookup, nameFromId)
{
    EXPECT_STREQ(getGroupNameFromId(1), "ComponentID");
    EXPECT_STREQ(getGroupNameFromId(36), "User Account Info");
    for (const unsigned long unused : {0UL, 17UL, 18UL, 33UL, 37UL, 0xFFFFFFFFUL})
        EXPECT_STREQ(getGroupNameFromId(unused), "Unknown") << unused;
}

TEST(GroupLookup, idFromNameIsExact)
{
    EXPECT_EQ(getGroupIdFromName("Memory"), 3UL);
    EXPECT_EQ(getGroupIdFromName("memory"), 0UL);
    EXPECT_EQ(getGroupIdFromName("Memory "), 0UL);
    EXPECT_EQ(getGroupIdFromName("Memory Modules"), 31UL);
    EXPECT_EQ(getGroupIdFromName(""), 0UL);
    EXPECT_EQ(getGroupIdFromName(nullptr), 0UL);
}

TEST(GroupLookup, debugMaskFromName)
{
    EXPECT_EQ(getDebugMaskFromName("Partition"), 0x4000000UL);
    EXPECT_EQ(getDebugMaskFromName("USB Device"), 0x2000000UL);
    EXPECT_EQ(getDebugMaskFromName("User Account Info"), 0xbUL);
    EXPECT_EQ(getDebugMaskFromName("usb device"), 0UL);
    EXPECT_EQ(getDebugMaskFromName(nullptr), 0UL);
}

TEST(GroupLookup, definitionFromId)
{
    EXPECT_EQ(getGroupDefinitionFromId(1), &GROUPS_DEF[0]);
    EXPECT_EQ(getGroupDefinitionFromId(36), &GROUPS_DEF[32]);
    EXPECT_EQ(getGroupDefinitionFromId(33), nullptr);
    EXPECT_EQ(getGroupDefinitionFromId(0xFFFFFFFF), nullptr);
    EXPECT_EQ(findGroupDefinition(nullptr, 1), nullptr);
}

TEST(AttribLookup, absentGroupTableOrIdGivesNull)
{
    const vexGroupDef bare = {1, "Bare", nullptr, nullptr, 0, 1, 0};
    EXPECT_EQ(getAttribNameFromId(nullptr, 1), nullptr);
    EXPECT_EQ(getAttribDefinitionFromId(nullptr, 1), nullptr);
    EXPECT_EQ(getAttribNameFromId(&bare, 1), nullptr);
    EXPECT_EQ(getAttribDefinitionFromId(&bare, 1), nullptr);
    const vexGroupDef* lpar = getGroupDefinitionFromId(GROUP_LPAR);
    EXPECT_EQ(getAttribNameFromId(lpar, 1), nullptr);
    EXPECT_STREQ(getAttribNameFromId(lpar, LPAR_ID), "Lpar ID");
    EXPECT_EQ(getAttribDefinitionFromId(lpar, 0xFFFFFFFF), nullptr);
    EXPECT_EQ(getAttribDefinitionFromId(lpar, LPAR_ID), &LPAR_ATTRS_DEF[0]);
}

namespace
{
const vexEnumDef kFirst[] = {{1, "one"}, {2, "two"}, {VEX_END, nullptr}};
const vexEnumDef kSecond[] = {{1, "uno"}, {3, "tres"}, {VEX_END, nullptr}};
} // namespace

TEST(EnumAsciiValue, searchesTheFirstAttributesEnumerationForAnyAttribute)
{
    static const vexAttribDef attribs[] = {
        {1, "A", VEX_ULONG, 0, kFirst}, {2, "B", VEX_ULONG, 0, kSecond}, {VEX_END, nullptr, 0, 0, nullptr}};
    const vexGroupDef group = {1, "G", attribs, nullptr, 0, 1, 0};
    EXPECT_STREQ(getEnumAsciiValue(&group, 1, 2), "two");
    EXPECT_STREQ(getEnumAsciiValue(&group, 2, 1), "one");
    EXPECT_EQ(getEnumAsciiValue(&group, 2, 3), nullptr);
    EXPECT_EQ(getEnumAsciiValue(&group, 3, 1), nullptr);
    EXPECT_EQ(getEnumAsciiValue(&group, 1, 0xFFFFFFFF), nullptr);
}

TEST(EnumAsciiValue, withoutEnumerationAtTheFirstAttributeThereIsNoText)
{
    static const vexAttribDef attribs[] = {
        {1, "A", VEX_ULONG, 0, nullptr}, {2, "B", VEX_ULONG, 0, kSecond}, {VEX_END, nullptr, 0, 0, nullptr}};
    const vexGroupDef group = {1, "G", attribs, nullptr, 0, 1, 0};
    EXPECT_EQ(getEnumAsciiValue(&group, 2, 1), nullptr);
    EXPECT_EQ(getEnumAsciiValue(getGroupDefinitionFromId(GROUP_STORAGE), STORAGE_TYPE, 17), nullptr);
}

TEST(EnumAsciiValue, anIdThatComesAgainResumesTheSearchAtItsEnd)
{
    static const vexAttribDef attribs[] = {
        {1, "A", VEX_ULONG, 0, kFirst}, {1, "A again", VEX_ULONG, 0, kSecond}, {VEX_END, nullptr, 0, 0, nullptr}};
    const vexGroupDef group = {1, "G", attribs, nullptr, 0, 1, 0};
    EXPECT_STREQ(getEnumAsciiValue(&group, 1, 1), "one");
    EXPECT_EQ(getEnumAsciiValue(&group, 1, 3), nullptr);
}

TEST(EnumAsciiValue, absentGroupOrTableGivesNull)
{
    const vexGroupDef bare = {1, "Bare", nullptr, nullptr, 0, 1, 0};
    EXPECT_EQ(getEnumAsciiValue(nullptr, 1, 1), nullptr);
    EXPECT_EQ(getEnumAsciiValue(&bare, 1, 1), nullptr);
}
