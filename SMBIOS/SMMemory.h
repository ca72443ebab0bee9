#pragma once

#include <cstdint>

#include "com/VexDebug.h"

// What the firmware says about memory modules. Every query answers 0 when there is no structure table.

/// The category of the lines about single modules: they go with every group whose collector may ask.
constexpr uint32_t kMemoryModuleMask =
    DEBUG_GENERAL | DEBUG_COMPONENTID | DEBUG_PROCESSOR | DEBUG_MEMORY | DEBUG_OPERATING_SYSTEM;

/// The largest module that fits a slot, in MB, and the number of slots, from the memory controller and the memory
/// array. Returns 1 when their sum is not 0.
int getMemorySpecs(unsigned int* maxModuleSizeMB, unsigned int* slots);
/// The largest memory device, KB.
unsigned int SM_getBiggestMemoryModule_17();
/// The largest module of the older kind, MB.
unsigned int SM_getBiggestMemoryModule_6();
/// 1 when exactly one bit of n is set.
int isPowerOf2(unsigned int n);
