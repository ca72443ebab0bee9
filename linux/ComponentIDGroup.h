#pragma once

#include "com/VexGroup.h"

/// Collector of group "ComponentID": the machine as a product.
class ComponentIDGroup final : public VexGroup
{
public:
    ComponentIDGroup();
    VexTable* getTable() override;
};
