#pragma once

#include "com/VexGroup.h"

/// Collector of group "Scan Info": who scans, when, and how long the system has been up.
class ScanInfoGroup final : public VexGroup
{
public:
    ScanInfoGroup();
    VexTable* getTable() override;
};
