#pragma once

#include "com/VexGroup.h"

/// Collector of group "Regional": the character-type locale and the time zone.
class RegionalGroup final : public VexGroup
{
public:
    RegionalGroup();
    VexTable* getTable() override;
};
