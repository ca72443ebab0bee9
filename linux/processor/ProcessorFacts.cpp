#include "linux/processor/ProcessorFacts.h"

#include <cstdio>
#include <utility>

#include "com/VexDebug.h"
#include "com/VexEnumValues.h"
#include "com/md5file.h"
#include "linux/processor/ProcSigs.h"
#include "linux/processor/RealSpeed.h"
#include "linux/text/TextParse.h"

namespace
{

struct FeatureAttrib {
    unsigned long id;
    uint32_t mask; // any of these bits means "Y"
};

// clang-format off
constexpr FeatureAttrib kFeatureAttribs[] = {
    {PROCESSOR_FPU,                         CPU_FEATURE_FPU},
    {PROCESSOR_VME,                         CPU_FEATURE_VME},
    {PROCESSOR_DEBUG_EXTENSION,             CPU_FEATURE_DE},
    {PROCESSOR_PAGE_SIZE_EXTENSIONS,        CPU_FEATURE_PSE},
    {PROCESSOR_TIME_STAMP_COUNTER,          CPU_FEATURE_TSC},
    {PROCESSOR_MODEL_SPECIFIC_REGISTERS,    CPU_FEATURE_MSR},
    {PROCESSOR_PHYSICAL_ADDRESS_EXTENSIONS, CPU_FEATURE_PAE},
    {PROCESSOR_MACHINE_CHECK_EXCEPTIONS,    CPU_FEATURE_MCE},
    {PROCESSOR_CMPXCHG8B,                   CPU_FEATURE_CX8},
    {PROCESSOR_ON_CHIP_APIC,                CPU_FEATURE_APIC},
    {PROCESSOR_FAST_SYSTEM_CALL,            CPU_FEATURE_SEP},
    {PROCESSOR_MTRR,                        CPU_FEATURE_MTRR},
    {PROCESSOR_PAGE_GLOBAL_ENABLE,          CPU_FEATURE_PGE},
    {PROCESSOR_MACHINE_CHECK_ARCHITECTURE,  CPU_FEATURE_MCA},
    {PROCESSOR_CONDITIONAL_MOVE,            CPU_FEATURE_CMOV},
    {PROCESSOR_PAGE_ATTRIBUTE_TABLE,        CPU_FEATURE_PAT},
    {PROCESSOR_PSE36,                       CPU_FEATURE_PSE36},
    {PROCESSOR_SERIAL_NUMBER_ENABLED,       CPU_FEATURE_PSN},
    {PROCESSOR_MMX,                         CPU_FEATURE_MMX},
    {PROCESSOR_FXSR,                        CPU_FEATURE_FXSR},
    {PROCESSOR_SSE,                         CPU_FEATURE_SSE | CPU_FEATURE_SSE2},
};
// clang-format on
static_assert(sizeof kFeatureAttribs / sizeof kFeatureAttribs[0] == PROCESSOR_SSE - PROCESSOR_FPU + 1);

const char* yesNo(bool yes)
{
    return yes ? "Y" : "N";
}

void addFeatures(VexTableRow& row, const ProcessorFacts& facts)
{
    row.addULong(PROCESSOR_CHIP_FEATURES, facts.features & INT32_MAX); // never a negative number
    for (const FeatureAttrib& attrib : kFeatureAttribs)
        row.addString(attrib.id, yesNo((facts.features & attrib.mask) != 0));
    if (facts.cpu.flags != nullptr)
        row.addString(PROCESSOR_3DNOW, yesNo(contains(facts.cpu.flags.get(), "3dnow")));
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
    if (family < PROCESSOR_FAMILY_8086) { // none, "Other", "Unknown"
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
    char text[kCpuInfoLineSize + 9 * sizeof "-2147483648"];
    snprintf(text, sizeof text, "%s%i%i%i%i%i%x%i%i%i", facts.cpu.vendor, static_cast<int32_t>(facts.maxSpeed),
             facts.currentSpeed, facts.cpu.family, facts.cpu.model, facts.cpu.stepping, facts.features,
             facts.externalClock, facts.interfaceCode, static_cast<int32_t>(facts.family));
    OwnedText id(md5_checksum(text));
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nmd5out=%s", id == nullptr ? "" : id.get());
    return id;
}

VexTableRow* newProcessorRow(uint32_t index, const char* id, const ProcessorFacts& facts)
{
    auto* const row = new VexTableRow;
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
