#pragma once

#include <cstddef>
#include <cstdint>

#include "com/Owned.h"
#include "linux/TextStream.h"

// What the kernel says about the processors in /proc/cpuinfo. Every value is taken once, so that a machine is described
// by the first processor's block; a file that cannot be opened leaves everything as it is initialised here.

/// Size of the buffer that lines are read into, and of every text taken from one: a longer line comes in pieces, which
/// are looked at like lines of their own.
constexpr size_t CPUINFO_LINE_SIZE = 256;

/// Bit 28 of the feature word: several logical processors may share a package.
constexpr uint32_t CPU_FEATURE_HT = 0x10000000;

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
    char vendor[CPUINFO_LINE_SIZE] = "";
    char modelName[CPUINFO_LINE_SIZE] = "";
    char mhz[CPUINFO_LINE_SIZE] = ""; // with decimals
    int32_t family = 0;
    int32_t model = 0;
    int32_t stepping = 0;
};

/// Copies to out the text that begins two characters after the first ":" of line ("key : value"); a line that ends
/// there gives the empty text, a line without ":" leaves out as it was. out has room for CPUINFO_LINE_SIZE bytes.
void parseLine(const char* line, char* out);

/// The feature word, in the bit positions of CPUID leaf 1 EDX, of a flags line; 0 for null.
unsigned long makeCPUflagsFromString(const char* line);

/// Reads the whole of a stream with the text of /proc/cpuinfo, or a null stream.
CpuInfo readCpuInfo(TextStream& stream);
/// The same, taking no other lines than those of the topology.
CpuTopology readCpuTopology(TextStream& stream);
