#pragma once

#include <cstdint>

// From a CPUID signature to a family value, for machines whose firmware does not tell the family.

/// One processor type; rows end with an all-zero one.
struct ProcSignature {
    uint32_t type;   // 0 ordinary, 1 OverDrive upgrade
    uint32_t family; // CPUID family
    uint32_t model;  // CPUID model
    uint32_t brand;  // ProcBrand
    const char* description;
    uint32_t familyValue; // ProcessorFamily
};

/// What tells apart processors of one signature; in the Intel table only.
enum ProcBrand : uint32_t {
    BRAND_PLAIN = 0,
    BRAND_CELERON = 1,
    BRAND_XEON = 2,
};

extern const ProcSignature IntelProcSigs[];
extern const ProcSignature AMDProcSigs[];
extern const ProcSignature CyrixProcSigs[];

/// The family value of a processor, from the vendor text of /proc/cpuinfo, the CPUID family and model and the model
/// name (which holds the brand); 2, "Unknown", for a processor that is in no table.
unsigned long getEnum(const char* vendor, unsigned long family, unsigned long model, const char* modelName);
