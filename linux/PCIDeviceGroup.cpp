#include "linux/PCIDeviceGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

PCIDeviceGroup::PCIDeviceGroup() : VexGroup(GROUP_PCI_DEVICE, 1) {}

VexTable* PCIDeviceGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_PCI_DEVICE, "PCI Device");
    return nullptr;
}
