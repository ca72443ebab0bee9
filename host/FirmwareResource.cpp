// Firmware Resource: what the firmware offers to update (the EFI system resource table, UEFI 2.10, 23.4): a row an
// entry.

#include "host/Collectors.h"
#include "host/Root.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
void collectFirmwareResource(const Machine& machine, Collection& collection)
{
    constexpr const char* kEntries = "/sys/firmware/efi/esrt/entries/";
    for (const std::string& name : machine.root.list(kEntries)) {
        const std::string folder = kEntries + name + '/';
        const auto number = [&](const char* file) { return machine.root.number(folder + file); };
        RowBuilder row(GROUP_FIRMWARE_RESOURCE);
        const std::string path = folder + "fw_class";
        row.text(FIRMWARE_RESOURCE_CLASS, report::lower(machine.root.line(path).value_or("")), path);
        row.number(FIRMWARE_RESOURCE_TYPE, number("fw_type"), folder + "fw_type");
        row.number(FIRMWARE_RESOURCE_VERSION, number("fw_version"), folder + "fw_version");
        row.number(FIRMWARE_RESOURCE_LOWEST_VERSION, number("lowest_supported_fw_version"),
                   folder + "lowest_supported_fw_version");
        if (!row.isEmpty())
            collection.add(std::move(row));
    }
}
} // namespace host
