#pragma once

#include <cstddef>
#include <cstdint>

#include "com/Owned.h"
#include "linux/text/TextStream.h"

// What the kernel says about the processors in /proc/cpuinfo. Every value is taken once, so that a machine is described
// by the first processor's block; a file that cannot be opened leaves everything as it is initialised here.

/// Size of the buffer that lines are read into, and of every text taken from one: a longer line comes in pieces, which
/// are looked at like lines of their own.
constexpr size_t kCpuInfoLineSize = 256;

/// Bits of the feature word, those of CPUID leaf 1 EDX.
enum CpuFeature : uint32_t {
    CPU_FEATURE_FPU = 1U << 0,
    CPU_FEATURE_VME = 1U << 1,
    CPU_FEATURE_DE = 1U << 2,
    CPU_FEATURE_PSE = 1U << 3,
    CPU_FEATURE_TSC = 1U << 4,
    CPU_FEATURE_MSR = 1U << 5,
    CPU_FEATURE_PAE = 1U << 6,
    CPU_FEATURE_MCE = 1U << 7,
    CPU_FEATURE_CX8 = 1U << 8,
    CPU_FEATURE_APIC = 1U << 9,
    CPU_FEATURE_SEP = 1U << 11,
    CPU_FEATURE_MTRR = 1U << 12,
    CPU_FEATURE_PGE = 1U << 13,
    CPU_FEATURE_MCA = 1U << 14,
    CPU_FEATURE_CMOV = 1U << 15,
    CPU_FEATURE_PAT = 1U << 16,
    CPU_FEATURE_PSE36 = 1U << 17,
    CPU_FEATURE_PSN = 1U << 18, // processor serial number
    CPU_FEATURE_MMX = 1U << 23,
    CPU_FEATURE_FXSR = 1U << 24,
    CPU_FEATURE_SSE = 1U << 25,
    CPU_FEATURE_SSE2 = 1U << 26,
    CPU_FEATURE_HT = 1U << 28, // several logical processors may share a package
};

/// The part that tells how many processors there are.
struct CpuTopology {
    int32_t processorLines = 0;    // one for each logical processor
    int32_t logicalProcessors = 1; // per package; what the file says, negative numbers included
    OwnedText flags;               // null: no flags line; an empty text counts as one

    /// True when packages hold several logical processors each, so that processorLines counts more than packages.
    bool hyperThreaded(uint32_t features) const { return (features & CPU_FEATURE_HT) != 0 && logicalProcessors >= 2; }
    /// The number of packages; only for a machine that is hyperThreaded.
    int32_t packages() const { return processorLines / logicalProcessors; }
};

/// The whole.
struct CpuInfo : CpuTopology {
    char vendor[kCpuInfoLineSize] = "";
    char modelName[kCpuInfoLineSize] = "";
    char mhz[kCpuInfoLineSize] = ""; // with decimals
    int32_t family = 0;
    int32_t model = 0;
    int32_t stepping = 0;
};

/// Copies to out the text that begins two characters after the first ":" of line ("key : value"); a line that ends
/// there gives the empty text, a line without ":" leaves out as it was. out has room for kCpuInfoLineSize bytes.
void parseLine(const char* line, char* out);

/// The feature word, in the bit positions of CPUID leaf 1 EDX, of a flags line; 0 for null.
unsigned long makeCPUflagsFromString(const char* line);

/// Reads the whole of a stream with the text of /proc/cpuinfo, or a null stream.
CpuInfo readCpuInfo(TextStream& stream);
/// The same, taking no other lines than those of the topology.
CpuTopology readCpuTopology(TextStream& stream);
