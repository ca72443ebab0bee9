#pragma once

#include "com/VexGroup.h"

/// Collector of group "Processor": one row for every physical processor.
class ProcessorGroup final : public VexGroup
{
public:
    ProcessorGroup();
    VexTable* getTable() override;
};
