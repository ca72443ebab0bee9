#include "host/firmware/StructureTable.h"

#include <gtest/gtest.h>

#include "tests/unit/host/firmware/FirmwareBytes.h"

using namespace host;

namespace
{
// An entry point of so many bytes with some of them set.
std::string entryPoint(const std::string& anchor, size_t length, std::initializer_list<std::pair<size_t, int>> fields)
{
    std::string bytes = anchor + std::string(length - anchor.size(), '\0');
    for (const auto& [offset, value] : fields)
        bytes[offset] = static_cast<char>(value);
    return bytes;
}

std::string entryPoint32(int major, int minor, size_t length = 31)
{
    return entryPoint("_SM_", length, {{5, static_cast<int>(length)}, {6, major}, {7, minor}});
}

std::string entryPoint64(int major, int minor)
{
    return entryPoint("_SM3_", 24, {{6, 24}, {7, major}, {8, minor}});
}

StructureBytes firmware()
{
    return std::move(StructureBytes(SMBIOS_FIRMWARE, 18, 0x0100).string(4, "Maker").string(5, " 1.2 ").string(8, "x"));
}

// Every byte that the accessors of a table give, so that a sanitizer sees what they read.
size_t readAll(const StructureTable& table)
{
    size_t sum = 0;
    for (const Structure& structure : table.structures())
        for (size_t offset = 0; offset < 260; ++offset)
            sum += structure.byte(offset).value_or(0) + structure.word(offset).value_or(0) +
                   structure.doubleWord(offset).value_or(0) + structure.quadWord(offset).value_or(0) +
                   structure.string(offset).size() + structure.field(offset, 16).size();
    return sum;
}
} // namespace

TEST(StructureTable, knowsTheVersionsOfAllEntryPoints)
{
    const struct {
        std::string bytes;
        const char* version;
        bool isYoung; // 2.6 or younger
    } cases[] = {
        {entryPoint32(2, 0), "2.0", false},
        {entryPoint32(2, 5), "2.5", false},
        {entryPoint32(2, 6), "2.6", true},
        {entryPoint32(2, 8), "2.8", true},
        {entryPoint32(2, 1, 30), "2.1", false}, // the length that standard 2.1 named by mistake
        {entryPoint64(3, 0), "3.0", true},
        {entryPoint64(3, 7), "3.7", true},
        {entryPoint("_DMI_", 15, {{14, 0x23}}), "2.3", false},
        {entryPoint32(2, 31), "2.3", false}, // firmware that wrote 2.3.1 so
        {entryPoint32(2, 33), "2.3", false},
        {entryPoint32(2, 51), "2.6", true},
        {entryPoint32(2, 8).substr(0, 20), "", true}, // cut off
        {entryPoint64(3, 7).substr(0, 23), "", true},
        {"_SM", "", true},
        {"rubbish that is longer than an entry point", "", true},
        {"", "", true},
    };
    for (const auto& c : cases) {
        const StructureTable table(c.bytes, "");
        EXPECT_EQ(table.version(), c.version);
        EXPECT_EQ(table.isAtLeast(2, 6), c.isYoung) << c.version;
    }
    EXPECT_FALSE(StructureTable(entryPoint64(3, 2), "").isAtLeast(3, 3));
    EXPECT_TRUE(StructureTable(entryPoint64(3, 2), "").isAtLeast(2, 9));
}

TEST(StructureTable, readsFieldsWithinTheFormattedArea)
{
    StructureBytes bytes(1, 16, 0xABCD);
    bytes.put(8, 0x1122334455667788, 8).string(4, "A");
    const StructureTable table("", bytes.bytes() + endOfTable());
    EXPECT_EQ(table.problem(), "");
    ASSERT_EQ(table.structures().size(), 2u);
    const Structure& structure = *table.first(1);
    EXPECT_EQ(structure.handle(), 0xABCD);
    EXPECT_EQ(structure.formattedLength(), 16u);
    EXPECT_EQ(structure.byte(8), 0x88);
    EXPECT_EQ(structure.byte(15), 0x11);
    EXPECT_EQ(structure.byte(16), std::nullopt); // the first byte of a string
    EXPECT_EQ(structure.word(14), 0x1122);
    EXPECT_EQ(structure.word(15), std::nullopt);
    EXPECT_EQ(structure.doubleWord(12), 0x11223344u);
    EXPECT_EQ(structure.doubleWord(13), std::nullopt);
    EXPECT_EQ(structure.quadWord(8), 0x1122334455667788u);
    EXPECT_EQ(structure.quadWord(9), std::nullopt);
    EXPECT_EQ(structure.quadWord(SIZE_MAX - 2), std::nullopt);
    EXPECT_EQ(structure.field(8, 8).size(), 8u);
    EXPECT_TRUE(structure.field(8, 9).empty());
    EXPECT_TRUE(structure.field(8, SIZE_MAX).empty());
}

TEST(StructureTable, readsStringsByTheirNumber)
{
    StructureBytes bytes(1, 12);
    bytes.string(4, "first").string(5, "  second\t").string(6, "   ").string(7, "\xFF\x01");
    bytes.put(8, 5, 1).put(9, 255, 1);
    const StructureTable table("", bytes.bytes() + StructureBytes(2, 8).put(4, 1, 1).bytes());
    const Structure& structure = *table.first(1);
    EXPECT_EQ(structure.string(4), "first");
    EXPECT_EQ(structure.string(5), "second");
    EXPECT_EQ(structure.string(6), "");
    EXPECT_EQ(structure.string(7), "\xFF\x01");
    EXPECT_EQ(structure.string(8), "") << "there are four";
    EXPECT_EQ(structure.string(9), "");
    EXPECT_EQ(structure.string(10), "") << "number 0";
    EXPECT_EQ(structure.string(12), "") << "behind the formatted area";
    ASSERT_NE(table.first(2), nullptr);
    EXPECT_EQ(table.first(2)->string(4), "") << "a structure without strings";
}

TEST(StructureTable, findsStructuresInOrderWithoutInactiveOnes)
{
    const std::string text = StructureBytes(17, 8, 1).bytes() + StructureBytes(SMBIOS_INACTIVE, 40, 2).bytes() +
                             StructureBytes(17, 8, 3).bytes() + firmware().bytes() + endOfTable() +
                             StructureBytes(17, 8, 9).bytes();
    const StructureTable table(entryPoint64(3, 7), text);
    EXPECT_EQ(table.problem(), "");
    EXPECT_EQ(table.structures().size(), 5u) << "nothing behind the end counts";
    const std::vector<const Structure*> devices = table.all(17);
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(devices[0]->handle(), 1);
    EXPECT_EQ(devices[1]->handle(), 3);
    EXPECT_EQ(table.first(0)->string(4), "Maker");
    EXPECT_EQ(table.first(3), nullptr);
    EXPECT_FALSE(table.isEmpty());
}

TEST(StructureTable, holdsStructuresOfTheGreatestLength)
{
    StructureBytes bytes(200, 255);
    bytes.put(247, 7, 8).string(4, "behind");
    const StructureTable table("", bytes.bytes() + endOfTable());
    ASSERT_EQ(table.structures().size(), 2u);
    EXPECT_EQ(table.first(200)->quadWord(247), 7u);
    EXPECT_EQ(table.first(200)->byte(254), 0);
    EXPECT_EQ(table.first(200)->byte(255), std::nullopt);
    EXPECT_EQ(table.first(200)->string(4), "behind");
}

TEST(StructureTable, endsAtWhatCannotBeTrueAndTellsIt)
{
    const std::string good = firmware().bytes();
    const struct {
        std::string rest;
        const char* problem;
    } cases[] = {
        {"", ""}, // the end-of-table structure came with 2.2
        {endOfTable(), ""},
        {endOfTable() + "rubbish", ""},
        {std::string("\1\3\0\0\0\0", 6), "structure 1 has a length of 3 with 6 bytes left"},
        {std::string("\1\0\0\0\0\0", 6), "structure 1 has a length of 0 with 6 bytes left"},
        {std::string("\1\x1B\0\0\0\0", 6), "structure 1 has a length of 27 with 6 bytes left"},
        {std::string("\1\4\0", 3), "structure 1 is cut off"},
        {std::string("\1\4\0\0", 4), "structure 1 is cut off"},
        {std::string("\1\4\0\0text", 8), "structure 1 is cut off"},
        {std::string("\1\4\0\0text\0", 9), "structure 1 is cut off"},
    };
    for (const auto& c : cases) {
        const StructureTable table("", good + c.rest);
        EXPECT_EQ(table.problem(), c.problem);
        ASSERT_FALSE(table.isEmpty());
        EXPECT_EQ(table.first(SMBIOS_FIRMWARE)->string(4), "Maker");
    }
}

TEST(StructureTable, cutOrDamagedAtEveryByteIsReadWithinItsBounds)
{
    const std::string text = firmware().bytes() + StructureBytes(4, 48).string(7, "cpu").bytes() +
                             StructureBytes(17, 92).string(16, "slot").bytes() + endOfTable();
    for (size_t size = 0; size <= text.size(); ++size) {
        const StructureTable table("", text.substr(0, size));
        readAll(table);
        EXPECT_LE(table.structures().size(), 4u);
        EXPECT_EQ(table.structures().size() == 4, size >= text.size() - 2) << size; // "end" without its two zeros
    }
    for (size_t at = 0; at < text.size(); ++at) {
        for (const int byte : {0x00, 0x01, 0x04, 0x7F, 0xFF}) {
            std::string damaged = text;
            damaged[at] = static_cast<char>(byte);
            readAll(StructureTable("", damaged));
        }
    }
}

TEST(StructureTable, ofMoreThanItsLimitIsCut)
{
    std::string text;
    while (text.size() <= StructureTable::kMostBytes)
        text += StructureBytes(200, 255).bytes();
    const StructureTable table("", text);
    EXPECT_EQ(table.structures().size(), StructureTable::kMostBytes / 257);
    EXPECT_EQ(table.problem(), "structure 16320 has a length of 255 with 64 bytes left");
}

TEST(StructureTable, withoutBytesIsEmpty)
{
    const StructureTable none;
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(none.problem(), "");
    EXPECT_EQ(none.version(), "");
    EXPECT_EQ(none.first(0), nullptr);
}
