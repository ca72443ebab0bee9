#pragma once

#include "com/VexGroup.h"

class TextStream;
class VexTable;

/// Collector of group "PCI Device": one row for every PCI device, from /proc/pci or, where the kernel has no such file,
/// from the output of lspci; null when neither can be had.
class PCIDeviceGroup final : public VexGroup
{
public:
    PCIDeviceGroup();
    VexTable* getTable() override;
};

/// Adds a row for every device of a listing in the form of /proc/pci.
void addProcPciDevices(TextStream& listing, VexTable* table);
/// Adds a row for every device of a listing in the form of "lspci -m".
void addLspciDevices(TextStream& listing, VexTable* table);
