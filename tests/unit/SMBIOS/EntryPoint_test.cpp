#include "SMBIOS/EntryPoint.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/unit/SMBIOS/MappedTable.h"
#include "tests/unit/SMBIOS/TableBuilder.h"

static size_t signatureIn(std::string area, unsigned long length)
{
    auto* const start = reinterpret_cast<unsigned char*>(area.data());
    const unsigned char* const found = find_signature(start, length);
    return found == nullptr ? std::string::npos : static_cast<size_t>(found - start);
}

TEST(FindSignature, looksOnParagraphsOnly)
{
    std::string area(64, '\0');
    area.replace(9, 4, "_SM_");
    EXPECT_EQ(signatureIn(area, 64), std::string::npos);
    area.replace(32, 4, "_SM_");
    EXPECT_EQ(signatureIn(area, 64), 32u);
    area.replace(16, 4, "_SM_");
    EXPECT_EQ(signatureIn(area, 64), 16u);
}

TEST(FindSignature, needsSixteenBytes)
{
    const std::string area = "_SM_" + std::string(60, '\0');
    EXPECT_EQ(signatureIn(area, 0), std::string::npos);
    EXPECT_EQ(signatureIn(area, 15), std::string::npos);
    EXPECT_EQ(signatureIn(area, 16), 0u);
    const std::string second = std::string(16, '\0') + area;
    EXPECT_EQ(signatureIn(second, 31), std::string::npos);
    EXPECT_EQ(signatureIn(second, 32), 16u);
}

// The strings that find_entry copies from a table, which stands at some place of a page; "none" for none.
static std::vector<std::string> entryOf(const std::vector<unsigned char>& bytes, size_t structures, size_t place = 40)
{
    const MappedTable mapped(bytes.data(), bytes.size(), place);
    const smbios_table_entry_point entryPoint = entryPointOf(bytes.size(), structures);
    smbios_sysinfo_table_entry entry;
    const int count = find_entry(mapped.table(), &entryPoint, &entry);
    std::vector<std::string> strings;
    for (int i = 0; i < count; ++i)
        strings.emplace_back(entry.strings[i]);
    free_entry(&entry, count);
    return strings;
}

using Strings = std::vector<std::string>;

static Structure system()
{
    return Structure(1, 25).string(4, "Maker").string(5, "Model").string(6, "v1").string(7, "SN");
}

TEST(FindEntry, copiesTheStringsOfTheFirstSystemStructure)
{
    const TableBytes table = TableBytes().add(Structure(0, 19).string(4, "V").string(5, "W")).add(system()).end();
    EXPECT_EQ(entryOf(table.bytes(), 3), (Strings{"Maker", "Model", "v1", "SN"}));
    EXPECT_EQ(entryOf(table.bytes(), 2), (Strings{"Maker", "Model", "v1", "SN"}));
    const MappedTable mapped(table.bytes().data(), table.bytes().size(), 0);
    const smbios_table_entry_point entryPoint = entryPointOf(table.bytes().size(), 3);
    smbios_sysinfo_table_entry entry;
    const int count = find_entry(mapped.table(), &entryPoint, &entry);
    EXPECT_EQ(entry.header[0], 1);
    EXPECT_EQ(entry.header[1], 25);
    EXPECT_EQ(entry.header[7], 4);
    free_entry(&entry, count);
}

TEST(FindEntry, findsNothingWhenNoStructuresAreDeclared)
{
    EXPECT_EQ(entryOf(TableBytes().add(system()).bytes(), 0), Strings());
}

TEST(FindEntry, findsNothingBehindTheDeclaredStructures)
{
    const TableBytes table = TableBytes().add(Structure(0, 19)).add(Structure(2, 8)).add(system()).end();
    EXPECT_EQ(entryOf(table.bytes(), 1), Strings());
    EXPECT_EQ(entryOf(table.bytes(), 2), Strings());
    EXPECT_EQ(entryOf(table.bytes(), 3).size(), 4u);
}

TEST(FindEntry, hasNoStringsWithoutStringNumbers)
{
    EXPECT_EQ(entryOf(TableBytes().add(Structure(1, 25).addString("unused")).bytes(), 1), Strings());
}

TEST(FindEntry, copiesAsManyStringsAsTheHighestNumber)
{
    EXPECT_EQ(
        entryOf(TableBytes().add(Structure(1, 25).byte(6, 2).addString("a").addString("b").addString("c")).bytes(), 1),
        (Strings{"a", "b"}));
}

TEST(FindEntry, readsZerosBehindTheLastPage)
{
    // Number 255 of a set of one string, at the very end of the last page.
    const auto bytes = Structure(1, 8).byte(4, 255).addString("only").bytes();
    const size_t place = static_cast<size_t>(getpagesize()) - bytes.size();
    const Strings strings = entryOf(bytes, 1, place);
    ASSERT_EQ(strings.size(), 255u);
    EXPECT_EQ(strings[0], "only");
    EXPECT_EQ(strings[254], "");
}

TEST(FindEntry, leavesTheTablesDeclaredEndButNotItsLastPage)
{
    // The table is declared to end before the system structure, which stands on the same page.
    const TableBytes table = TableBytes().add(Structure(0, 19)).add(system()).end();
    const MappedTable mapped(table.bytes().data(), table.bytes().size(), 0);
    const smbios_table_entry_point entryPoint = entryPointOf(10, 3);
    smbios_sysinfo_table_entry entry;
    const int count = find_entry(mapped.table(), &entryPoint, &entry);
    EXPECT_EQ(count, 4);
    free_entry(&entry, count);

    const std::vector<unsigned char> endless(3000, 'x');
    EXPECT_EQ(entryOf(endless, 0xFFFF), Strings());
    const std::vector<unsigned char> zeros(3000, 0);
    EXPECT_EQ(entryOf(zeros, 0xFFFF), Strings());
    EXPECT_EQ(entryOf({}, 5, 0), Strings());
}

TEST(FindEntry, survivesBeingCutAtEveryByte)
{
    const std::vector<unsigned char> bytes = TableBytes().add(Structure(0, 19).string(4, "V")).add(system()).bytes();
    for (size_t size = 0; size <= bytes.size(); ++size) {
        const std::vector<unsigned char> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        const size_t place = (static_cast<size_t>(getpagesize()) - size) % static_cast<size_t>(getpagesize());
        const std::vector<std::string> strings = entryOf(cut, 2, place);
        for (const std::string& text : strings)
            EXPECT_LE(text.size(), size) << "nothing from outside";
        EXPECT_TRUE(size < bytes.size() || strings == (Strings{"Maker", "Model", "v1", "SN"}));
    }
}
