#pragma once

#include <cstdint>

class VexTable;

/// Base of every collector: one group of the catalog and the operation that collects it. Collectors are deleted through
/// their own type, hence the plain destructor.
class VexGroup
{
public:
    VexGroup(unsigned long groupId, unsigned long version);

    unsigned long getGroupId() const { return groupId_; }
    unsigned long getGroupVersion() const { return groupVersion_; }
    /// The group's catalog name; "Unknown" when it is not there.
    const char* getGroupName() const;
    /// Collects the group into a new table that the caller owns; null when there is nothing to report.
    virtual VexTable* getTable();

private:
    uint32_t groupVersion_;
    uint32_t groupId_;
};

/// The debug log's sink: writes text to the open log and flushes it at once, so that the log survives a crash. Returns
/// 0 on success or while logging to the file is off, 1 when the write failed.
int VexOutput(const char* text);
