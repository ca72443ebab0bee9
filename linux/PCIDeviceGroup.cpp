// Sources: /proc/pci, or the output of lspci where the kernel has no such file. The devices are the bus's own; their
// names are the kernel's, those of lspci, or the built-in tables', all as old as these are.

#include "linux/PCIDeviceGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/pci/Lspci.h"
#include "linux/pci/ProcPci.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

namespace
{

constexpr size_t kLineSize = 256;

void addDevice(VexTable* table, uint32_t index, const char* name, const char* revision)
{
    auto* const row = new VexTableRow;
    row->addULong(PCI_DEVICE_INDEX, index);
    row->addString(PCI_DEVICE_NAME, name);
    row->addString(PCI_DEVICE_REVISION, revision);
    table->addRow(row);
}

} // namespace

PCIDeviceGroup::PCIDeviceGroup() : VexGroup(GROUP_PCI_DEVICE, 1) {}

void addProcPciDevices(TextStream& listing, VexTable* table)
{
    ProcPciParser parser;
    uint32_t count = 0;
    char line[kLineSize];
    while (listing.readLine(line)) {
        dropTrailingControl(line);
        if (parser.takeLine(line))
            addDevice(table, ++count, parser.device().name, parser.device().revision);
    }
}

void addLspciDevices(TextStream& listing, VexTable* table)
{
    LspciDevice device;
    uint32_t count = 0;
    char line[kLineSize];
    while (listing.readLine(line))
        if (parseLspciLine(line, &device))
            addDevice(table, ++count, device.name.c_str(), device.revision.c_str());
}

VexTable* PCIDeviceGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_PCI_DEVICE, "PCI Device");
    TextStream procPci = TextStream::openFile("/proc/pci");
    if (procPci) {
        auto* const table = new VexTable(getGroupId(), getGroupVersion());
        addProcPciDevices(procPci, table);
        return table;
    }
    TextStream lspci = TextStream::runCommand("/sbin/lspci -m 2>/dev/null");
    if (!lspci) {
        VEX_LOG(DEBUG_PCI_DEVICE, VEX_LEVEL_DETAIL, "\ncould not obtain pci devices informations.");
        return nullptr;
    }
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    addLspciDevices(lspci, table);
    return table;
}
