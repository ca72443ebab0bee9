#include "com/VexTable.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/unit/Capture.h"

namespace
{
// A row that can be told from others by its one value.
VexTableRow* rowOf(uint32_t value)
{
    auto* row = new VexTableRow;
    row->addULong(1, value);
    return row;
}

// Counts its deaths.
struct Mortal {
    explicit Mortal(int* deaths) : deaths_(deaths) {}
    ~Mortal() { ++*deaths_; }
    int* deaths_;
};
} // namespace

TEST(VexList, isEmptyAtFirst)
{
    VexList<int> list;
    EXPECT_EQ(list.getNext(), nullptr);
    EXPECT_EQ(list.getNext(), nullptr);
    list.reset();
    EXPECT_EQ(list.getNext(), nullptr);
}

TEST(VexList, keepsTheOrderOfAddition)
{
    VexList<int> list;
    for (int i = 0; i < 5; ++i)
        list.add(new int(i));
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(*list.getNext(), i);
    EXPECT_EQ(list.getNext(), nullptr);
}

TEST(VexList, findsWhatIsAddedAfterTheEndOfAPass)
{
    VexList<int> list;
    list.add(new int(1));
    EXPECT_EQ(*list.getNext(), 1);
    EXPECT_EQ(list.getNext(), nullptr);
    list.add(new int(2));
    EXPECT_EQ(*list.getNext(), 2);
    EXPECT_EQ(list.getNext(), nullptr);
}

TEST(VexList, visitsAllWithoutMovingTheCursor)
{
    VexList<int> list;
    for (int i = 1; i <= 3; ++i)
        list.add(new int(i));
    EXPECT_EQ(*list.getNext(), 1);
    int sum = 0;
    list.forEach([&](const int& value) { sum += value; });
    EXPECT_EQ(sum, 6);
    EXPECT_EQ(*list.getNext(), 2);
}

TEST(VexList, deletesEveryElementOnce)
{
    int deaths = 0;
    {
        VexList<Mortal> list;
        for (int i = 0; i < 4; ++i)
            list.add(new Mortal(&deaths));
        list.getNext();
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 4);
}

TEST(VexTable, newTableIsEmptyAndKnowsItsGroup)
{
    VexTable table(27, 1);
    EXPECT_EQ(table.getNext(), nullptr);
    EXPECT_EQ(table.getGroupId(), 27UL);
    EXPECT_EQ(table.getGroupVersion(), 1UL);
    EXPECT_STREQ(table.getGroupName(), "Partition");
    EXPECT_EQ(table.getGroupDefinitionFromId()->attributes, PART_ATTRS_DEF);
}

TEST(VexTable, groupOutsideTheCatalogIsUnknown)
{
    const VexTable table(17, 1);
    EXPECT_STREQ(table.getGroupName(), "Unknown");
    EXPECT_EQ(table.getGroupDefinitionFromId(), nullptr);
    EXPECT_STREQ(VexTable(0xFFFFFFFF, 1).getGroupName(), "Unknown");
}

TEST(VexTable, usesTheGivenCatalog)
{
    static const vexGroupDef catalog[] = {{27, "Ours", nullptr, nullptr, 0, 1, 0},
                                          {VEX_END, nullptr, nullptr, nullptr, 0, 0, 0}};
    static const vexGroupDef empty[] = {{VEX_END, nullptr, nullptr, nullptr, 0, 0, 0}};
    EXPECT_STREQ(VexTable(catalog, 27, 1).getGroupName(), "Ours");
    EXPECT_STREQ(VexTable(catalog, 1, 1).getGroupName(), "Unknown");
    EXPECT_STREQ(VexTable(empty, 27, 1).getGroupName(), "Unknown");
    EXPECT_STREQ(VexTable(nullptr, 27, 1).getGroupName(), "Unknown");
}

TEST(VexTable, passEndsWithNullUntilReset)
{
    VexTable table(2, 1);
    VexTableRow* const rows[] = {rowOf(1), rowOf(2), rowOf(3)};
    for (VexTableRow* row : rows)
        EXPECT_EQ(table.addRow(row), 1);
    EXPECT_EQ(table.reset(), 1);
    for (VexTableRow* row : rows)
        EXPECT_EQ(table.getNext(), row);
    EXPECT_EQ(table.getNext(), nullptr);
    EXPECT_EQ(table.getNext(), nullptr);
    table.reset();
    EXPECT_EQ(table.getNext(), rows[0]);
}

TEST(VexTable, rowAddedDuringAPassIsReached)
{
    VexTable table(2, 1);
    table.addRow(rowOf(1));
    table.addRow(rowOf(2));
    table.getNext();
    VexTableRow* const late = rowOf(3);
    table.addRow(late);
    table.getNext();
    EXPECT_EQ(table.getNext(), late);
    EXPECT_EQ(table.getNext(), nullptr);
}

TEST(VexTable, dumpShowsEveryRowAndLeavesTheCursorsAlone)
{
    VexTable table(31, 1);
    table.addRow(rowOf(5));
    table.addRow(new VexTableRow);
    table.getNext();
    EXPECT_EQ(capturedOutput([&] { table.toString(); }), "\n--------Table Memory Modules (0000001F) ver=1"
                                                         "\nRows=2"
                                                         "\n\t Attribs=1"
                                                         "\n\t\t---len      : 16"
                                                         "\n\t\t   attribId : x00000001"
                                                         "\n\t\t   vex_type : 3 (VEX_ULONG)"
                                                         "\n\t\t   value    : 5 (0x00000005)"
                                                         "\n\t Attribs=0");
    EXPECT_NE(table.getNext(), nullptr);
    EXPECT_EQ(table.getNext(), nullptr);
}

TEST(VexTableRow, countsItsAttributesAndKeepsTheirOrder)
{
    VexTableRow row;
    EXPECT_EQ(row.getNumAttribs(), 0);
    EXPECT_EQ(row.getNext(), nullptr);
    EXPECT_EQ(row.addAttrib(new VexTableAttrib(9, 1UL)), 1);
    EXPECT_EQ(row.addAttrib(new VexTableAttrib(4, "x")), 1);
    EXPECT_EQ(row.getNumAttribs(), 2);
    EXPECT_EQ(row.getNext()->getId(), 9UL);
    EXPECT_EQ(row.getNext()->getId(), 4UL);
    EXPECT_EQ(row.getNext(), nullptr);
    EXPECT_EQ(row.reset(), 1);
    EXPECT_EQ(row.getNext()->getId(), 9UL);
}

TEST(VexTableRow, shortFormsStoreTheTypeThatTheyName)
{
    VexTableRow row;
    row.addULong(1, 1);
    row.addString(2, "text");
    row.addFloat(3, 1.0F);
    row.addDateTime(4, 0);
    const unsigned long types[] = {VEX_ULONG, VEX_STRING, VEX_FLOAT, VEX_DATETIME};
    unsigned long id = 0;
    for (const unsigned long type : types) {
        const VexTableAttrib* attrib = row.getNext();
        EXPECT_EQ(attrib->getId(), ++id);
        EXPECT_EQ(attrib->getType(), type);
    }
}
