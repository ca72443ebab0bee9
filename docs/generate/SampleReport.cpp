#include "docs/generate/Documents.h"

#include <cstdio>
#include <cstring>

#include "com/VexTable.h"
#include "scanner/XmlReport.h"

namespace
{
// A value of the attribute's type; the text holds what the report must escape.
VexTableAttrib* sampleValue(const vexAttribDef& attrib)
{
    switch (attrib.type) {
    case VEX_ULONG:
        return new VexTableAttrib(attrib.id, 0xFFFFFFFEUL);
    case VEX_FLOAT:
        return new VexTableAttrib(attrib.id, -1.0F);
    case VEX_DATETIME:
        return new VexTableAttrib(attrib.id, 1089896709L);
    default:
        return new VexTableAttrib(attrib.id, "A&B<C> \"quoted\"");
    }
}

// The whole group in one row, the attributes in the catalog's order or against it.
void printAllAttributes(const vexGroupDef& group, bool backwards)
{
    uint32_t count = 0;
    while (group.attributes[count].id != VEX_END)
        ++count;
    VexTable table(group.id, group.version);
    auto* const row = new VexTableRow;
    for (uint32_t i = 0; i < count; ++i)
        row->addAttrib(sampleValue(group.attributes[backwards ? count - 1 - i : i]));
    table.addRow(row);
    printXML(&table);
}

bool isWellFormedText(const char* text)
{
    return strpbrk(text, "&<") == nullptr;
}

// One row for every text of an enumeration.
void printEnumTexts(const vexGroupDef& group, const vexAttribDef& attrib)
{
    for (const vexEnumDef* pair = attrib.enums; pair->value != VEX_END; ++pair) {
        if (!isWellFormedText(pair->text))
            continue;
        VexTable table(group.id, group.version);
        auto* const row = new VexTableRow;
        row->addULong(attrib.id, pair->value);
        table.addRow(row);
        printXML(&table);
    }
}

void printEmptyRow(const vexGroupDef& group)
{
    VexTable table(group.id, group.version);
    table.addRow(new VexTableRow);
    printXML(&table);
}
} // namespace

void writeSampleReport()
{
    printf("\n<serviceDataList>");
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group) {
        printAllAttributes(*group, false);
        printAllAttributes(*group, true);
        printEmptyRow(*group);
        for (const vexAttribDef* attrib = group->attributes; attrib->id != VEX_END; ++attrib)
            if (attrib->enums != nullptr)
                printEnumTexts(*group, *attrib);
    }
    printf("\n\n</serviceDataList>");
}
