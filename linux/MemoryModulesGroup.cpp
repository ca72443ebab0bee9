// Source: the firmware's Memory Device structures, or its Memory Module structures where it has none of those. They
// are believed as the board's vendor described them; nothing compares them with the memory that the kernel sees.

#include "linux/MemoryModulesGroup.h"

#include <cstddef>
#include <string>
#include <sys/sysinfo.h>

#include "SMBIOS/SMBIOSTable.h"
#include "SMBIOS/SMMemory.h"
#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/firmware/FirmwareText.h"

namespace
{

// One module, as the report shows it.
struct MemoryModule {
    uint32_t sizeMB = 0;
    std::string socket;
    std::string packaging;
    std::string type;
};

// A word that a set bit stands for, with the blank behind it.
struct BitWord {
    int bit;
    const char* word;
};

// Memory Device: form factor and memory type by value (DSP0134, 7.18.1 and 7.18.2), type detail by bit (7.18.3).
constexpr const char* kFormFactors[] = {
    nullptr, nullptr, nullptr,        "SIMM", "SIP",    "Chip", "DIP", "ZIP", "Proprietary Card",
    "DIMM",  "TSOP",  "Row of chips", "RIMM", "SODIMM", "SRIMM"};
constexpr const char* kMemoryTypes[] = {nullptr, nullptr, nullptr, "DRAM",  "EDRAM",  "VRAM",
                                        "SRAM",  "RAM",   "ROM",   "FLASH", "EEPROM", "FEPROM",
                                        "EPROM", "CDRAM", "3DRAM", "SDRAM", "SGRAM",  "RDRAM"};
constexpr BitWord kTypeDetails[] = {
    {3, "Fast-paged "}, {4, "Static column "}, {5, "Pseudo-static "}, {6, "Rambus "},      {7, "Synchronous "},
    {8, "CMOS "},       {9, "EDO "},           {10, "Window DRAM "},  {11, "Cache DRAM "}, {12, "Non-volatile "}};

// Memory Module: current memory type by bit (DSP0134, 7.7.1), in the order of the report.
constexpr BitWord kModuleTypes[] = {{5, "Parity "}, {6, "ECC "},       {2, "Standard "}, {3, "Fast Page Mode "},
                                    {4, "EDO "},    {9, "Burst EDO "}, {10, "SDRAM "}};
constexpr int kSimmBit = 7;
constexpr int kDimmBit = 8;

template <size_t N>
const char* nameOf(const char* const (&names)[N], unsigned value)
{
    return value < N && names[value] != nullptr ? names[value] : "";
}

template <size_t N>
std::string wordsOf(const BitWord (&words)[N], unsigned bits)
{
    std::string text;
    for (const BitWord& word : words)
        if ((bits >> word.bit & 1) != 0)
            text += word.word;
    return text;
}

void dropTrailingBlank(std::string* text)
{
    if (!text->empty() && text->back() == ' ')
        text->pop_back();
}

MemoryModule describeDevice(const SMBIOSTable17Data& device)
{
    MemoryModule module;
    module.sizeMB = static_cast<uint32_t>(device.getSizeKB() >> 10);
    module.socket = validatedText(device.getDeviceLocator());
    const std::string bank = validatedText(device.getBankLocator());
    if (!bank.empty() && !module.socket.empty())
        module.socket += '/';
    module.socket += bank;
    module.packaging = nameOf(kFormFactors, device.getFormFactor());
    module.type = wordsOf(kTypeDetails, device.getTypeDetail()) + nameOf(kMemoryTypes, device.getMemoryType());
    dropTrailingBlank(&module.type);
    return module;
}

MemoryModule describeModule(const SMBIOSTable6Data& record)
{
    MemoryModule module;
    const int sizeMB = record.getInstalledSizeMB();
    module.sizeMB = static_cast<uint32_t>(sizeMB < 0 ? 0 : sizeMB);
    module.socket = validatedText(record.getSocketDesignation());
    const unsigned type = record.getMemoryType();
    if ((type >> kSimmBit & 1) != 0)
        module.packaging = "SIMM";
    if ((type >> kDimmBit & 1) != 0)
        module.packaging = "DIMM";
    module.type = wordsOf(kModuleTypes, type);
    dropTrailingBlank(&module.type);
    return module;
}

// "0x02" and "0x04" before the numbers were meant as widths; readers of the log know the lines so.
void traceDevice(int index, const SMBIOSTable17Data& device, const MemoryModule& module)
{
    VEX_LOG(kMemoryModuleMask, VEX_LEVEL_DETAIL,
            "\n  Module #%i:  %4iMB, SMMemType: 0x02%x/0x04%x, formFactor: 0x02%x\n  Socket: [%s]  packaging: [%s] "
            "type: [%s]",
            index, static_cast<int>(module.sizeMB), static_cast<unsigned>(device.getMemoryType()),
            static_cast<unsigned>(device.getTypeDetail()), static_cast<unsigned>(device.getFormFactor()),
            module.socket.c_str(), module.packaging.c_str(), module.type.c_str());
}

void traceModule(int index, const SMBIOSTable6Data& record, const MemoryModule& module)
{
    VEX_LOG(kMemoryModuleMask, VEX_LEVEL_DETAIL,
            "\n  Module #%i:  %4iMB, SMMemType: 0x04%x, Socket: %s\n   [packaging: %s type: %s]", index,
            static_cast<int>(module.sizeMB), static_cast<unsigned>(record.getMemoryType()), module.socket.c_str(),
            module.packaging.c_str(), module.type.c_str());
}

void addModule(VexTable* table, int index, const MemoryModule& module, uint32_t maxModuleSizeMB)
{
    auto* const row = new VexTableRow;
    row->addULong(MEMORY_MODULES_INDEX, static_cast<uint32_t>(index));
    row->addULong(MEMORY_MODULES_MODULE_SIZE_MB, module.sizeMB);
    row->addULong(MEMORY_MODULES_MAX_MODULE_SIZE_MB, maxModuleSizeMB);
    row->addString(MEMORY_MODULES_SOCKET_NAME, module.socket.c_str());
    row->addString(MEMORY_MODULES_PACKAGING, module.packaging.c_str());
    row->addString(MEMORY_MODULES_MEMORY_TYPE, module.type.c_str());
    table->addRow(row);
}

} // namespace

MemoryModulesGroup::MemoryModulesGroup() : VexGroup(GROUP_MEMORY_MODULES, 1) {}

VexTable* MemoryModulesGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_MEMORY_MODULES, "Memory Modules");
    const SMBIOSTable* firmware = availableSMBIOSTable();
    const int count6 = firmware == nullptr ? 0 : firmware->getTable6Total();
    const int count17 = firmware == nullptr ? 0 : firmware->getTable17Total();
    if (count6 != 0)
        VEX_LOG(kMemoryModuleMask, VEX_LEVEL_DETAIL, "\n  SMBIOS Table 6 is available (%i).", count6);
    if (count17 != 0)
        VEX_LOG(kMemoryModuleMask, VEX_LEVEL_DETAIL, "\n  SMBIOS Table 17 is available (%i).", count17);
    unsigned int maxModuleSizeMB, slots;
    getMemorySpecs(&maxModuleSizeMB, &slots);
    if (count6 == 0 && count17 == 0)
        return nullptr;

    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    for (int i = 0; i < count17; ++i) {
        const MemoryModule module = describeDevice(*firmware->getTable17(i));
        traceDevice(i + 1, *firmware->getTable17(i), module);
        addModule(table, i + 1, module, maxModuleSizeMB);
    }
    for (int i = 0; count17 == 0 && i < count6; ++i) {
        const MemoryModule module = describeModule(*firmware->getTable6(i));
        traceModule(i + 1, *firmware->getTable6(i), module);
        addModule(table, i + 1, module, maxModuleSizeMB);
    }
    return table;
}

unsigned long totalPhysMemKB()
{
    struct sysinfo info;
    return sysinfo(&info) == 0 ? info.totalram >> 10 : 0;
}
