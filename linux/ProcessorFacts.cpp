#include "linux/ProcessorFacts.h"

#include <cstdio>
#include <cstring>
#include <utility>

#include "com/VexDebug.h"
#include "com/md5file.h"
#include "linux/ProcSigs.h"
#include "linux/RealSpeed.h"
#include "linux/TextParse.h"

namespace
{

constexpr uint32_t FIRST_KNOWN_FAMILY = 3; // below: none, "Other", "Unknown"

struct FeatureAttrib {
    unsigned long id;
    uint32_t mask; // any of these bits means "Y"
};

// clang-format off
constexpr FeatureAttrib FEATURE_ATTRIBS[] = {
    {PROCESSOR_FPU,                         1u << 0},
    {PROCESSOR_VME,                         1u << 1},
    {PROCESSOR_DEBUG_EXTENSION,             1u << 2},
    {PROCESSOR_PAGE_SIZE_EXTENSIONS,        1u << 3},
    {PROCESSOR_TIME_STAMP_COUNTER,          1u << 4},
    {PROCESSOR_MODEL_SPECIFIC_REGISTERS,    1u << 5},
    {PROCESSOR_PHYSICAL_ADDRESS_EXTENSIONS, 1u << 6},
    {PROCESSOR_MACHINE_CHECK_EXCEPTIONS,    1u << 7},
    {PROCESSOR_CMPXCHG8B,                   1u << 8},
    {PROCESSOR_ON_CHIP_APIC,                1u << 9},
    {PROCESSOR_FAST_SYSTEM_CALL,            1u << 11},
    {PROCESSOR_MTRR,                        1u << 12},
    {PROCESSOR_PAGE_GLOBAL_ENABLE,          1u << 13},
    {PROCESSOR_MACHINE_CHECK_ARCHITECTURE,  1u << 14},
    {PROCESSOR_CONDITIONAL_MOVE,            1u << 15},
    {PROCESSOR_PAGE_ATTRIBUTE_TABLE,        1u << 16},
    {PROCESSOR_PSE36,                       1u << 17},
    {PROCESSOR_SERIAL_NUMBER_ENABLED,       1u << 18},
    {PROCESSOR_MMX,                         1u << 23},
    {PROCESSOR_FXSR,                        1u << 24},
    {PROCESSOR_SSE,                         1u << 25 | 1u << 26},
};
// clang-format on
static_assert(sizeof FEATURE_ATTRIBS / sizeof FEATURE_ATTRIBS[0] == PROCESSOR_SSE - PROCESSOR_FPU + 1);

const char* yesNo(bool yes)
{
    return yes ? "Y" : "N";
}

void addFeatures(VexTableRow& row, const ProcessorFacts& facts)
{
    row.addULong(PROCESSOR_CHIP_FEATURES, facts.features & 0x7FFFFFFF);
    for (const FeatureAttrib& attrib : FEATURE_ATTRIBS)
        row.addString(attrib.id, yesNo((facts.features & attrib.mask) != 0));
    if (facts.cpu.flags != nullptr)
        row.addString(PROCESSOR_3DNOW, yesNo(strstr(facts.cpu.flags.get(), "3dnow") != nullptr));
    if (facts.cpu.hyperThreaded(facts.features))
        row.addString(PROCESSOR_CPU_ENABLED, "H");
}

} // namespace

ProcessorFacts mergeFacts(CpuInfo cpu, const FirmwareProcessor& firmware)
{
    ProcessorFacts facts;
    facts.maxSpeed = static_cast<uint32_t>(RealSpeedValue(static_cast<uint32_t>(parseLong(cpu.mhz))));
    facts.currentSpeed = firmware.currentSpeed;
    facts.externalClock = firmware.externalClock;
    facts.interfaceCode = firmware.interfaceCode;
    facts.features = firmware.features;
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nSM_cpuspeed=%i SM_cpuflags=%08x", facts.currentSpeed, facts.features);
    if (facts.currentSpeed == 0)
        facts.currentSpeed = static_cast<uint16_t>(facts.maxSpeed);
    if (cpu.flags != nullptr)
        facts.features = static_cast<uint32_t>(makeCPUflagsFromString(cpu.flags.get()));
    facts.cpu = std::move(cpu);
    return facts;
}

uint32_t decideFamily(const CpuInfo& cpu, uint32_t firmwareFamily)
{
    uint32_t family = firmwareFamily;
    if (family < FIRST_KNOWN_FAMILY) {
        VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nSMBIOS Family not found, using old method");
        family = static_cast<uint32_t>(
            getEnum(cpu.vendor, static_cast<uint32_t>(cpu.family), static_cast<uint32_t>(cpu.model), cpu.modelName));
    }
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\ncpuenum=%d", static_cast<int32_t>(family));
    return family;
}

int32_t countProcessors(int32_t available, const CpuTopology& cpu, uint32_t features, int32_t populatedSockets)
{
    int32_t count = available;
    if (count == cpu.processorLines)
        VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nAPI and cpuinfo processor counts match");
    else
        VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nAPI and cpuinfo processor counts don't match");
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\npcount=%d logical procs=%d\n", cpu.processorLines,
            cpu.logicalProcessors);
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "SMBIOS Populated Processors = %d\n", populatedSockets);
    if (cpu.hyperThreaded(features)) {
        count = cpu.packages();
        VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nHyperthreading detected: Physical CPU count=%d", count);
    }
    if (count == populatedSockets || populatedSockets == 0) {
        VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_MAIN, "***Processor count == SMBIOS count or SMBIOS count == 0\n");
        VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_MAIN, "***Hyperthreading check not useful \n");
    } else if (count > populatedSockets) {
        count = populatedSockets; // the kernel counted threads; fewer than the firmware's sockets are believed
    }
    return count;
}

OwnedText processorId(const ProcessorFacts& facts)
{
    char text[CPUINFO_LINE_SIZE + 9 * sizeof "-2147483648"];
    snprintf(text, sizeof text, "%s%i%i%i%i%i%x%i%i%i", facts.cpu.vendor, static_cast<int32_t>(facts.maxSpeed),
             facts.currentSpeed, facts.cpu.family, facts.cpu.model, facts.cpu.stepping, facts.features,
             facts.externalClock, facts.interfaceCode, static_cast<int32_t>(facts.family));
    OwnedText id(md5_checksum(text));
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nmd5out=%s", id == nullptr ? "" : id.get());
    return id;
}

VexTableRow* newProcessorRow(uint32_t index, const char* id, const ProcessorFacts& facts)
{
    auto* row = new VexTableRow;
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nfamily=%i model=%i stepping=%i speed=%i (%s) extspd=%i interface=%i",
            facts.cpu.family, facts.cpu.model, facts.cpu.stepping, static_cast<int32_t>(facts.maxSpeed), facts.cpu.mhz,
            facts.externalClock, facts.interfaceCode);
    row->addULong(PROCESSOR_INDEX, index);
    row->addString(PROCESSOR_ID, id);
    row->addULong(PROCESSOR_FAMILY, facts.family);
    row->addULong(PROCESSOR_MAX_CLOCK_SPEED, facts.maxSpeed);
    row->addULong(PROCESSOR_CURRENT_CLOCK_SPEED, facts.currentSpeed);
    if (facts.externalClock != 0)
        row->addULong(PROCESSOR_EXTERNAL_CLOCK_SPEED, facts.externalClock);
    row->addString(PROCESSOR_MANUFACTURER, facts.cpu.vendor);
    if (facts.interfaceCode != 0)
        row->addULong(PROCESSOR_INTERFACE, facts.interfaceCode); // a number, though the catalog says text
    row->addULong(PROCESSOR_CHIP_FAMILY, static_cast<uint32_t>(facts.cpu.family));
    row->addULong(PROCESSOR_CHIP_MODEL, static_cast<uint32_t>(facts.cpu.model));
    row->addULong(PROCESSOR_CHIP_STEPPING, static_cast<uint32_t>(facts.cpu.stepping));
    addFeatures(*row, facts);
    return row;
}
