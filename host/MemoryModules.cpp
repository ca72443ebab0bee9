// Memory Modules: a row a socket, from the firmware's table; a socket without a module has a row of size 0. Where the
// table is refused, what udev has kept of it for all to read.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/firmware/FirmwareFacts.h"
#include "host/firmware/MemoryDevices.h"
#include "host/memory/ErrorCounts.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
RowBuilder moduleRow(const MemoryDevice& device, std::string_view source, uint64_t index)
{
    RowBuilder row(GROUP_MEMORY_MODULES);
    row.number(MEMORY_MODULES_INDEX, index, source);
    row.number(MEMORY_MODULES_MODULE_SIZE_MB, device.sizeMB, source);
    row.number(MEMORY_MODULES_MAX_MODULE_SIZE_MB, device.mostMB, source);
    row.text(MEMORY_MODULES_SOCKET_NAME, device.socket, source);
    row.text(MEMORY_MODULES_BANK_NAME, device.bank, source);
    row.text(MEMORY_MODULES_PACKAGING, device.formFactor, source);
    row.text(MEMORY_MODULES_FORM_FACTOR, device.formFactor, source);
    row.text(MEMORY_MODULES_MEMORY_TYPE, device.typeWithDetail(), source);
    row.text(MEMORY_MODULES_TYPE_DETAIL, device.typeDetail, source);
    row.text(MEMORY_MODULES_MANUFACTURER, device.manufacturer, source);
    row.text(MEMORY_MODULES_PART_NUMBER, device.partNumber, source);
    row.text(MEMORY_MODULES_SERIAL_NUMBER, device.serialNumber, source);
    row.text(MEMORY_MODULES_ASSET_TAG, device.assetTag, source);
    row.number(MEMORY_MODULES_SPEED, device.speed, source);
    row.number(MEMORY_MODULES_CONFIGURED_SPEED, device.configuredSpeed, source);
    row.number(MEMORY_MODULES_RANK, device.rank, source);
    row.number(MEMORY_MODULES_DATA_WIDTH, device.dataWidth, source);
    row.number(MEMORY_MODULES_TOTAL_WIDTH, device.totalWidth, source);
    row.number(MEMORY_MODULES_CONFIGURED_VOLTAGE, device.configuredMillivolts, source);
    return row;
}

void addErrors(const ErrorCounts& counts, RowBuilder& row)
{
    row.number(MEMORY_MODULES_CORRECTED_ERRORS, counts.corrected, counts.folder + "dimm_ce_count");
    row.number(MEMORY_MODULES_UNCORRECTED_ERRORS, counts.uncorrected, counts.folder + "dimm_ue_count");
}

// An empty socket has no place that anything could be said of.
std::vector<ModulePlace> placesOf(const std::vector<MemoryDevice>& devices)
{
    std::vector<ModulePlace> places;
    places.reserve(devices.size());
    for (const MemoryDevice& device : devices)
        places.push_back(device.sizeMB == 0 ? ModulePlace{} : ModulePlace{device.socket, device.bank});
    return places;
}
} // namespace

void collectMemoryModules(const Machine& machine, Collection& collection)
{
    const FirmwareFacts firmware(machine.root, collection.notes());
    std::string_view source = FirmwareFacts::kTablePath;
    std::vector<MemoryDevice> devices = memoryDevicesOf(firmware.table());
    if (firmware.table().isEmpty()) {
        source = kUdevMemoryPath;
        devices = memoryDevicesOfUdev(machine.root.read(kUdevMemoryPath).value_or(""));
    }
    const std::vector<ErrorCounts> counts = readErrorCounts(machine.root);
    const std::vector<const ErrorCounts*> ofModules = countsOfModules(counts, placesOf(devices));
    for (size_t i = 0; i < devices.size(); ++i) {
        RowBuilder row = moduleRow(devices[i], source, i + 1);
        if (ofModules[i] != nullptr)
            addErrors(*ofModules[i], row);
        collection.add(std::move(row));
    }
}
} // namespace host
