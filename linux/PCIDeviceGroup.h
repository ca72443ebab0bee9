#pragma once

#include "com/VexGroup.h"

/// Collector of group "PCI Device": one row for every PCI device.
class PCIDeviceGroup final : public VexGroup
{
public:
    PCIDeviceGroup();
    VexTable* getTable() override;
};
