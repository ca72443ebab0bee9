#pragma once

#include "com/VexGroup.h"

/// Collector of group "Storage": one row for every physical or logical drive. While it collects, the kernel's SCSI
/// generic driver is loaded.
class StorageGroup final : public VexGroup
{
public:
    StorageGroup();
    VexTable* getTable() override;
};

/// Loads the kernel module of the SCSI generic driver; its errors pass through a scratch file in the current directory.
/// Returns 1 if this call loaded it, 0 if it was there before or cannot be loaded.
int loadSG();
