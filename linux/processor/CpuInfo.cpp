#include "linux/processor/CpuInfo.h"

#include <cstring>

#include "com/VexDebug.h"
#include "linux/text/TextParse.h"

namespace
{

struct CpuFlag {
    const char* name;
    uint32_t mask;
};

// clang-format off
constexpr CpuFlag IntelX86Flags[] = {
    {"fpu",   CPU_FEATURE_FPU},
    {"vme",   CPU_FEATURE_VME},
    {"de",    CPU_FEATURE_DE},
    {"pse",   CPU_FEATURE_PSE},
    {"tsc",   CPU_FEATURE_TSC},
    {"msr",   CPU_FEATURE_MSR},
    {"pae",   CPU_FEATURE_PAE},
    {"mce",   CPU_FEATURE_MCE},
    {"cx8",   CPU_FEATURE_CX8},
    {"apic",  CPU_FEATURE_APIC},
    {"sep",   CPU_FEATURE_SEP},
    {"mtrr",  CPU_FEATURE_MTRR},
    {"pge",   CPU_FEATURE_PGE},
    {"mca",   CPU_FEATURE_MCA},
    {"cmov",  CPU_FEATURE_CMOV},
    {"pat",   CPU_FEATURE_PAT},
    {"pse36", CPU_FEATURE_PSE36},
    {"psn",   CPU_FEATURE_PSN},
    {"mmx",   CPU_FEATURE_MMX},
    {"fxsr",  CPU_FEATURE_FXSR},
    {"sse",   CPU_FEATURE_SSE},
    {"xmm",   CPU_FEATURE_SSE},  // the name that early kernels gave to sse
    {"sse2",  CPU_FEATURE_SSE2},
    {"ht",    CPU_FEATURE_HT},
};
// clang-format on
static_assert(sizeof IntelX86Flags / sizeof IntelX86Flags[0] == 24);

// Sorts the lines of one file into the record that it fills.
class LineSorter
{
public:
    // True when the line belonged to the topology and was taken.
    bool takeProcessor(CpuTopology& cpu, const char* line)
    {
        if (strncmp(line, "processor", strlen("processor")) != 0)
            return false;
        if (cpu.processorLines < INT32_MAX)
            ++cpu.processorLines;
        return true;
    }

    bool takeSiblings(CpuTopology& cpu, const char* line)
    {
        return cpu.logicalProcessors == 1 && takeNumber(cpu.logicalProcessors, line, "siblings");
    }

    bool takeFlags(CpuTopology& cpu, const char* line)
    {
        if (cpu.flags != nullptr || !contains(line, "flags"))
            return false;
        parseLine(line, scratch_);
        cpu.flags.reset(strdup(scratch_));
        return true;
    }

    // Values stay open to later blocks while they are empty or 0. The order counts: a second "model name" line is tried
    // as "model", where it yields 0.
    bool takeDetail(CpuInfo& cpu, const char* line)
    {
        return takeText(cpu.modelName, line, "model name") || takeText(cpu.mhz, line, "cpu MHz") ||
               takeText(cpu.vendor, line, "vendor_id") ||
               (cpu.family == 0 && takeNumber(cpu.family, line, "cpu family")) ||
               (cpu.model == 0 && takeNumber(cpu.model, line, "model")) ||
               (cpu.stepping == 0 && takeNumber(cpu.stepping, line, "stepping"));
    }

private:
    bool takeNumber(int32_t& number, const char* line, const char* key)
    {
        if (!contains(line, key))
            return false;
        parseLine(line, scratch_);
        number = parseLong(scratch_);
        return true;
    }

    static bool takeText(char (&text)[kCpuInfoLineSize], const char* line, const char* key)
    {
        if (text[0] != '\0' || !contains(line, key))
            return false;
        parseLine(line, text);
        return true;
    }

    // Shared by all numbers and the flags: a line without ":" repeats what the last one held.
    char scratch_[kCpuInfoLineSize] = "";
};

} // namespace

void parseLine(const char* line, char* out)
{
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nparsing: %s", line);
    const char* colon = strchr(line, ':');
    if (colon == nullptr)
        return;
    const char* value = colon[1] == '\0' ? colon + 1 : colon + 2;
    const size_t length = strnlen(value, kCpuInfoLineSize - 1);
    memcpy(out, value, length);
    out[length] = '\0';
}

unsigned long makeCPUflagsFromString(const char* line)
{
    uint32_t features = 0;
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nparsing CPU flags line: ");
    for (const CpuFlag& flag : IntelX86Flags) {
        VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "\nfor desc:i=%d, %s", static_cast<int>(&flag - IntelX86Flags),
                flag.name);
        // A substring anywhere counts, so "sse2" is also "sse": readers of old reports know it so.
        if (line != nullptr && contains(line, flag.name))
            features |= flag.mask;
    }
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "flagVal=%08x", features);
    return features;
}

CpuInfo readCpuInfo(TextStream& stream)
{
    CpuInfo cpu;
    LineSorter sorter;
    char line[kCpuInfoLineSize];
    while (stream.readLine(line)) {
        dropTrailingControl(line);
        if (!sorter.takeProcessor(cpu, line) && !sorter.takeSiblings(cpu, line) && !sorter.takeDetail(cpu, line))
            sorter.takeFlags(cpu, line);
    }
    return cpu;
}

CpuTopology readCpuTopology(TextStream& stream)
{
    CpuTopology cpu;
    LineSorter sorter;
    char line[kCpuInfoLineSize];
    while (stream.readLine(line)) {
        dropTrailingControl(line);
        if (!sorter.takeProcessor(cpu, line) && !sorter.takeSiblings(cpu, line))
            sorter.takeFlags(cpu, line);
    }
    return cpu;
}
