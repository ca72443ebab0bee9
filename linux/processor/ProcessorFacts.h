#pragma once

#include <cstdint>

#include "com/Owned.h"
#include "com/VexTableRow.h"
#include "linux/processor/CpuInfo.h"

// What a row of the Processor group is made of. All rows of a scan carry the same facts: those of the first processor.

struct ProcessorFacts {
    CpuInfo cpu;                // from the kernel
    uint32_t maxSpeed = 0;      // MHz, nominal
    uint16_t currentSpeed = 0;  // MHz
    uint16_t externalClock = 0; // MHz; 0 not known
    uint16_t interfaceCode = 0; // by PROCESSOR_INTERFACE_ENUM_DEF; 0 not known
    uint32_t features = 0;      // bits of CPUID leaf 1 EDX
    uint32_t family = 0;        // ProcessorFamily
};

/// What the firmware says about the first processor; zeros where it says nothing.
struct FirmwareProcessor {
    uint16_t currentSpeed = 0;
    uint16_t externalClock = 0;
    uint16_t interfaceCode = 0;
    uint32_t features = 0;
    uint32_t family = 0;
    int32_t populatedSockets = 0;
};

/// Merges what the kernel and what the firmware say; the family is taken later, by decideFamily.
ProcessorFacts mergeFacts(CpuInfo cpu, const FirmwareProcessor& firmware);

/// The family value: the firmware's unless that is none, "Other" or "Unknown", else the one of the signature tables.
uint32_t decideFamily(const CpuInfo& cpu, uint32_t firmwareFamily);

/// The number of physical processors, from the number that the C library counts, the kernel's list and the number of
/// populated sockets (0 not known).
int32_t countProcessors(int32_t available, const CpuTopology& cpu, uint32_t features, int32_t populatedSockets);

/// A key that stays the same from scan to scan: the digest of the facts. Null when memory is short.
OwnedText processorId(const ProcessorFacts& facts);

/// The row of one processor, owned by the caller; index counts from 1.
VexTableRow* newProcessorRow(uint32_t index, const char* id, const ProcessorFacts& facts);
