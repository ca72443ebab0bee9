// Any bytes as a firmware's table behind an entry point of 32 bytes: no crash, every field and text lies in the table,
// structures and what is made of them are no more than the bytes can hold.

#include <cstdint>
#include <cstdlib>

#include "host/firmware/MemoryDevices.h"
#include "host/firmware/ProcessorSockets.h"

using namespace host;

static constexpr size_t kEntryPointLength = 32;
static constexpr size_t kLeastStructure = 4;

static void require(bool isTrue)
{
    if (!isTrue)
        abort();
}

static void checkStructure(const Structure& structure)
{
    for (size_t offset = 0; offset < 260; ++offset) {
        const bool hasByte = offset < structure.formattedLength();
        require(structure.byte(offset).has_value() == hasByte);
        require(structure.quadWord(offset).has_value() == (offset + 8 <= structure.formattedLength()));
        require(hasByte || structure.string(offset).empty());
        require(structure.string(offset).find('\0') == std::string_view::npos);
    }
}

static void checkFacts(const StructureTable& table)
{
    constexpr uint64_t kMostExtended = 0x7FFFFFFF;
    const std::vector<MemoryDevice> devices = memoryDevicesOf(table);
    require(devices.size() == table.all(SMBIOS_MEMORY_DEVICE).size());
    for (const MemoryDevice& device : devices) {
        require(device.sizeMB.value_or(0) <= kMostExtended);
        require(device.speed.value_or(1) != 0 && device.configuredSpeed.value_or(1) <= kMostExtended);
    }
    require(processorSocketsOf(table).size() <= table.all(SMBIOS_PROCESSOR).size());
    memoryLimitsOf(table);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const StructureTable table(bytes.substr(0, kEntryPointLength),
                               std::string(bytes.substr(std::min(size, kEntryPointLength))));
    require(table.structures().size() <= size / kLeastStructure);
    for (const Structure& structure : table.structures())
        checkStructure(structure);
    checkFacts(table);
    return 0;
}
