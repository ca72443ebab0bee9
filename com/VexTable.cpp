#include "com/VexTable.h"

#include <cstdio>

#include "com/VexUtil.h"

VexTable::VexTable(unsigned long groupId, unsigned long version) : VexTable(GROUPS_DEF, groupId, version) {}

VexTable::VexTable(const vexGroupDef* catalog, unsigned long groupId, unsigned long version)
    : groupVersion_(static_cast<uint32_t>(version)), groupId_(static_cast<uint32_t>(groupId)), catalog_(catalog)
{
}

int VexTable::addRow(VexTableRow* row)
{
    rows_.add(row);
    ++rowCount_;
    return 1;
}

const char* VexTable::getGroupName() const
{
    const vexGroupDef* group = getGroupDefinitionFromId();
    return group == nullptr ? "Unknown" : group->name;
}

const vexGroupDef* VexTable::getGroupDefinitionFromId() const
{
    return findGroupDefinition(catalog_, groupId_);
}

int VexTable::reset()
{
    rows_.reset();
    return 1;
}

void VexTable::toString() const
{
    printf("\n--------Table %s (%08X) ver=%d", getGroupName(), groupId_, static_cast<int32_t>(groupVersion_));
    printf("\nRows=%d", rowCount_);
    rows_.forEach([](const VexTableRow& row) { row.toString(); });
}
