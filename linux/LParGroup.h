#pragma once

#include "com/VexGroup.h"

/// Collector of group "Lpar": the machine as a single partition.
class LParGroup final : public VexGroup
{
public:
    LParGroup();
    VexTable* getTable() override;
};
