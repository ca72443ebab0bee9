#pragma once

#include <cstdint>

#include "com/VexCatalog.h"
#include "com/VexList.h"
#include "com/VexTableRow.h"

/// A collector's answer: the rows of one group.
class VexTable
{
public:
    VexTable(unsigned long groupId, unsigned long version);
    /// The same with another catalog than GROUPS_DEF; catalog must outlive the table.
    VexTable(const vexGroupDef* catalog, unsigned long groupId, unsigned long version);

    /// Appends row, which the table owns from now on; a pass that is under way will still reach it. Returns 1.
    int addRow(VexTableRow* row);
    unsigned long getGroupId() const { return groupId_; }
    unsigned long getGroupVersion() const { return groupVersion_; }
    /// The group's name in the catalog; "Unknown" when it is not there.
    const char* getGroupName() const;
    /// The group's catalog row, or null.
    const vexGroupDef* getGroupDefinitionFromId() const;
    /// Starts a new pass over the rows. Returns 1.
    int reset();
    /// The next row of the pass, or null at its end.
    VexTableRow* getNext() { return rows_.getNext(); }
    /// Dumps the table to standard output; the cursors are not touched.
    void toString() const;

private:
    uint32_t groupVersion_;
    uint32_t groupId_;
    const vexGroupDef* catalog_;
    VexList<VexTableRow> rows_;
    int32_t rowCount_ = 0;
};
