// Memory: how much there is and how much is used, from /proc/meminfo; what the board can take, from the firmware's
// table.

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/firmware/FirmwareFacts.h"
#include "host/firmware/MemoryDevices.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr std::string_view kMeminfo = "/proc/meminfo";

// Which line fills which attribute; all in kB.
struct MeminfoLine {
    std::string_view key;
    uint32_t attribute;
};
constexpr MeminfoLine kLines[] = {
    {"MemTotal", MEMORY_TOTAL_PHYSICAL}, {"MemFree", MEMORY_FREE_PHYSICAL},  {"SwapTotal", MEMORY_TOTAL_VIRTUAL},
    {"SwapFree", MEMORY_FREE_VIRTUAL},   {"MemAvailable", MEMORY_AVAILABLE}, {"SwapTotal", MEMORY_SWAP_TOTAL},
    {"SwapFree", MEMORY_SWAP_FREE},
};

// Kilobytes by bytes: 1/1024 of the pages, as readers of the catalog's attributes know it.
void addPages(RowBuilder& row, uint32_t attribute, std::optional<uint64_t> kilobytes, uint32_t pageSize)
{
    if (kilobytes && pageSize != 0)
        row.number(attribute, *kilobytes / pageSize, kMeminfo);
}

void addMeminfo(std::string_view text, uint32_t pageSize, RowBuilder& row)
{
    std::string_view rest = text;
    std::string_view line;
    while (report::takeLine(rest, line)) {
        const auto [key, value] = report::keyValue(line, ':');
        const std::optional<uint64_t> kilobytes = report::leadingNumber(value);
        for (const MeminfoLine& known : kLines)
            if (known.key == key)
                row.number(known.attribute, kilobytes, kMeminfo);
        if (key == "MemTotal")
            addPages(row, MEMORY_TOTAL_PAGE, kilobytes, pageSize);
        if (key == "MemFree")
            addPages(row, MEMORY_FREE_PAGE, kilobytes, pageSize);
    }
}

// Nothing is said of memory that the firmware does not know.
void addFirmwareFacts(const FirmwareFacts& firmware, RowBuilder& row)
{
    const MemoryLimits limits = memoryLimitsOf(firmware.table());
    if (limits.mostMB != 0)
        row.number(MEMORY_MAX_MEMORY_MB, limits.mostMB, FirmwareFacts::kTablePath);
    if (limits.sockets != 0)
        row.number(MEMORY_NUM_SLOTS, limits.sockets, FirmwareFacts::kTablePath);
    uint64_t installed = 0;
    for (const MemoryDevice& device : memoryDevicesOf(firmware.table()))
        installed += device.sizeMB.value_or(0);
    if (installed != 0)
        row.number(MEMORY_INSTALLED_MB, installed, FirmwareFacts::kTablePath);
}
} // namespace

void collectMemory(const Machine& machine, Collection& collection)
{
    RowBuilder row(GROUP_MEMORY);
    const uint32_t pageSize = machine.kernel.pageSize();
    if (const std::optional<std::string> text = machine.root.read(kMeminfo))
        addMeminfo(*text, pageSize, row);
    if (pageSize != 0)
        row.number(MEMORY_PAGE_SIZE, pageSize, "sysconf");
    addFirmwareFacts(FirmwareFacts(machine.root, collection.notes()), row);
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
