#include "linux/processor/ProcSigs.h"

#include <cstddef>

#include "com/VexEnumValues.h"
#include "linux/text/TextParse.h"

namespace
{

// True when the last row alone is the terminator.
template <size_t Rows>
constexpr bool isTerminated(const ProcSignature (&table)[Rows])
{
    for (size_t i = 0; i + 1 < Rows; ++i) {
        if (table[i].description == nullptr)
            return false;
    }
    return table[Rows - 1].description == nullptr && table[Rows - 1].familyValue == 0;
}

uint32_t brandOf(const char* modelName)
{
    if (contains(modelName, "Celeron"))
        return BRAND_CELERON;
    return contains(modelName, "Xeon") ? BRAND_XEON : BRAND_PLAIN;
}

unsigned long findIntel(uint32_t family, uint32_t model, uint32_t brand)
{
    for (const ProcSignature* row = IntelProcSigs; row->description != nullptr; ++row) {
        if (row->type == 0 && row->family == family && row->model == model && row->brand == brand)
            return row->familyValue;
    }
    return PROCESSOR_FAMILY_UNKNOWN;
}

unsigned long findSignature(const ProcSignature* row, uint32_t family, uint32_t model)
{
    for (; row->description != nullptr; ++row) {
        if (row->family == family && row->model == model)
            return row->familyValue;
    }
    return PROCESSOR_FAMILY_UNKNOWN;
}

} // namespace

// The first match wins, so the order of the rows counts: OverDrive rows, which no lookup asks for, and repeated
// signatures stand for the record only.
// clang-format off
// type, family, model, brand, description, family value
constexpr ProcSignature IntelProcSigs[] = {
    {0,  4,  0, BRAND_PLAIN,   "Intel486 DX",                                                  PROCESSOR_FAMILY_80486},
    {0,  4,  1, BRAND_PLAIN,   "Intel486 DX",                                                  PROCESSOR_FAMILY_80486},
    {0,  4,  2, BRAND_PLAIN,   "Intel486 SX",                                                  PROCESSOR_FAMILY_80486},
    {0,  4,  3, BRAND_PLAIN,   "Intel487, IntelDX2, or IntelDX2 OverDrive",                    PROCESSOR_FAMILY_80487},
    {0,  4,  4, BRAND_PLAIN,   "Intel486 SL",                                                  PROCESSOR_FAMILY_80486},
    {0,  4,  5, BRAND_PLAIN,   "IntelSX2",                                                     PROCESSOR_FAMILY_80486},
    {0,  4,  7, BRAND_PLAIN,   "Write-Back Enhanced IntelDX2",                                 PROCESSOR_FAMILY_80486},
    {0,  4,  8, BRAND_PLAIN,   "IntelDX4",                                                     PROCESSOR_FAMILY_80486},
    {1,  4,  8, BRAND_PLAIN,   "IntelDX4 OverDrive",                                           PROCESSOR_FAMILY_80486},
    {0,  5,  1, BRAND_PLAIN,   "Intel Pentium",                                                PROCESSOR_FAMILY_PENTIUM},
    {0,  5,  2, BRAND_PLAIN,   "Intel Pentium",                                                PROCESSOR_FAMILY_PENTIUM},
    {0,  5,  1, BRAND_PLAIN,   "Intel Pentium OverDrive for Pentium 60 or 66",                 PROCESSOR_FAMILY_PENTIUM},
    {1,  5,  2, BRAND_PLAIN,   "Intel Pentium OverDrive for Pentium 75, 90, 100, 120, or 133", PROCESSOR_FAMILY_PENTIUM},
    {1,  5,  3, BRAND_PLAIN,   "Intel Pentium OverDrive for Intel486",                         PROCESSOR_FAMILY_PENTIUM},
    {0,  5,  4, BRAND_PLAIN,   "Intel Pentium w/MMX technology",                               PROCESSOR_FAMILY_PENTIUM_MMX},
    {0,  5,  8, BRAND_PLAIN,   "Intel Pentium w/MMX technology",                               PROCESSOR_FAMILY_PENTIUM_MMX},
    {1,  5,  4, BRAND_PLAIN,   "Reserved for future OverDrive for Intel Pentium",              PROCESSOR_FAMILY_PENTIUM},
    {0,  6,  1, BRAND_PLAIN,   "Intel Pentium Pro",                                            PROCESSOR_FAMILY_PENTIUM_PRO},
    {0,  6,  3, BRAND_PLAIN,   "Intel Pentium II, Model 3",                                    PROCESSOR_FAMILY_PENTIUM_II},
    {0,  6,  5, BRAND_PLAIN,   "Intel Pentium II, Model 5",                                    PROCESSOR_FAMILY_PENTIUM_II},
    {0,  6,  6, BRAND_PLAIN,   "Intel Pentium II, Model 6",                                    PROCESSOR_FAMILY_PENTIUM_II},
    {0,  6,  3, BRAND_CELERON, "Intel Celeron, Model 3",                                       PROCESSOR_FAMILY_CELERON},
    {0,  6,  5, BRAND_CELERON, "Intel Celeron, Model 5",                                       PROCESSOR_FAMILY_CELERON},
    {0,  6,  6, BRAND_CELERON, "Intel Celeron, Model 6",                                       PROCESSOR_FAMILY_CELERON},
    {0,  6,  3, BRAND_XEON,    "Intel Pentium II Xeon, Model 3",                               PROCESSOR_FAMILY_PENTIUM_II_XEON},
    {0,  6,  5, BRAND_XEON,    "Intel Pentium II Xeon, Model 5",                               PROCESSOR_FAMILY_PENTIUM_II_XEON},
    {0,  6,  6, BRAND_XEON,    "Intel Pentium II Xeon, Model 6",                               PROCESSOR_FAMILY_PENTIUM_II_XEON},
    {1,  6,  3, BRAND_PLAIN,   "Reserved for future OverDrive for Intel Pentium Pro",          PROCESSOR_FAMILY_PENTIUM_PRO},
    {0,  5,  7, BRAND_PLAIN,   "Intel Pentium",                                                PROCESSOR_FAMILY_PENTIUM},
    {0,  6,  7, BRAND_PLAIN,   "Intel Pentium III",                                            PROCESSOR_FAMILY_PENTIUM_III},
    {0,  6,  7, BRAND_XEON,    "Intel Pentium III Xeon",                                       PROCESSOR_FAMILY_PENTIUM_III},
    {0,  6,  8, BRAND_PLAIN,   "Intel Pentium III",                                            PROCESSOR_FAMILY_PENTIUM_III},
    {0,  6,  8, BRAND_XEON,    "Intel Pentium III Xeon",                                       PROCESSOR_FAMILY_PENTIUM_III},
    {0,  6,  8, BRAND_CELERON, "Intel Celeron, Model 8",                                       PROCESSOR_FAMILY_CELERON},
    {0,  6,  9, BRAND_PLAIN,   "Intel Pentium M",                                              PROCESSOR_FAMILY_PENTIUM_M},
    {0,  6, 10, BRAND_XEON,    "Intel Pentium III Xeon, model A",                              PROCESSOR_FAMILY_PENTIUM_III},
    {0,  6, 10, BRAND_PLAIN,   "Intel Pentium III",                                            PROCESSOR_FAMILY_PENTIUM_III},
    {0,  6, 11, BRAND_PLAIN,   "Intel Pentium III, model B",                                   PROCESSOR_FAMILY_PENTIUM_III},
    {0,  6, 11, BRAND_CELERON, "Intel Celeron, Model 11",                                      PROCESSOR_FAMILY_CELERON},
    {0,  6, 13, BRAND_PLAIN,   "Intel Pentium M",                                              PROCESSOR_FAMILY_PENTIUM_M},
    {1,  6,  3, BRAND_PLAIN,   "Intel Pentium II OverDrive",                                   PROCESSOR_FAMILY_PENTIUM_II},
    {0, 15,  0, BRAND_PLAIN,   "Intel Pentium 4",                                              PROCESSOR_FAMILY_PENTIUM_4},
    {0, 15,  1, BRAND_PLAIN,   "Intel Pentium 4",                                              PROCESSOR_FAMILY_PENTIUM_4},
    {0, 15,  2, BRAND_PLAIN,   "Intel Pentium 4",                                              PROCESSOR_FAMILY_PENTIUM_4},
    {0, 15,  3, BRAND_PLAIN,   "Intel Pentium 4",                                              PROCESSOR_FAMILY_PENTIUM_4},
    {0, 15,  4, BRAND_PLAIN,   "Intel Pentium 4",                                              PROCESSOR_FAMILY_PENTIUM_4},
    {0, 15,  0, BRAND_XEON,    "Intel Xeon",                                                   PROCESSOR_FAMILY_XEON},
    {0, 15,  1, BRAND_XEON,    "Intel Xeon",                                                   PROCESSOR_FAMILY_XEON},
    {0, 15,  2, BRAND_XEON,    "Intel Xeon",                                                   PROCESSOR_FAMILY_XEON},
    {0, 15,  3, BRAND_XEON,    "Intel Xeon",                                                   PROCESSOR_FAMILY_XEON},
    {0, 15,  4, BRAND_XEON,    "Intel Xeon",                                                   PROCESSOR_FAMILY_XEON},
    {0, 15,  1, BRAND_CELERON, "Intel Celeron",                                                PROCESSOR_FAMILY_CELERON},
    {0, 15,  2, BRAND_CELERON, "Intel Celeron",                                                PROCESSOR_FAMILY_CELERON},
    {0, 15,  3, BRAND_CELERON, "Intel Celeron",                                                PROCESSOR_FAMILY_CELERON},
    {0, 15,  4, BRAND_CELERON, "Intel Celeron",                                                PROCESSOR_FAMILY_CELERON},
    {},
};

static_assert(isTerminated(IntelProcSigs) && sizeof IntelProcSigs == (55 + 1) * sizeof(ProcSignature));

constexpr ProcSignature AMDProcSigs[] = {
    {0,  4,  0, BRAND_PLAIN, "AMD AM486 and AM5x86",                   PROCESSOR_FAMILY_K5},
    {0,  5,  0, BRAND_PLAIN, "AMD-K5 Model 0",                         PROCESSOR_FAMILY_K5},
    {0,  5,  1, BRAND_PLAIN, "AMD-K5 Model 1",                         PROCESSOR_FAMILY_K5},
    {0,  5,  2, BRAND_PLAIN, "AMD-K5 Model 2",                         PROCESSOR_FAMILY_K5},
    {0,  5,  3, BRAND_PLAIN, "AMD-K5 Model 3",                         PROCESSOR_FAMILY_K5},
    {0,  5,  6, BRAND_PLAIN, "AMD-K6 Model 6",                         PROCESSOR_FAMILY_K6},
    {0,  5,  7, BRAND_PLAIN, "AMD-K6 Model 7",                         PROCESSOR_FAMILY_K6},
    {0,  5,  8, BRAND_PLAIN, "AMD-K6-2 Model 8",                       PROCESSOR_FAMILY_K6_2},
    {0,  5,  9, BRAND_PLAIN, "AMD-K6-III Model 9",                     PROCESSOR_FAMILY_K6_3},
    {0,  6,  1, BRAND_PLAIN, "AMD Athlon Model 1",                     PROCESSOR_FAMILY_K7},
    {0,  6,  2, BRAND_PLAIN, "AMD Athlon Model 2",                     PROCESSOR_FAMILY_K7},
    {0,  6,  3, BRAND_PLAIN, "AMD Duron",                              PROCESSOR_FAMILY_K7},
    {0,  6,  4, BRAND_PLAIN, "AMD Athlon Model 4",                     PROCESSOR_FAMILY_K7},
    {0,  6,  6, BRAND_PLAIN, "AMD Athlon (Palomino) / Duron (Morgan)", PROCESSOR_FAMILY_K7},
    {0,  6,  7, BRAND_PLAIN, "AMD Duron (Morgan)",                     PROCESSOR_FAMILY_K7},
    {0,  6,  8, BRAND_PLAIN, "AMD Athlon XP (Thoroughbred)",           PROCESSOR_FAMILY_K7},
    {0,  6, 10, BRAND_PLAIN, "AMD Athlon XP (Barton)",                 PROCESSOR_FAMILY_K7},
    {0, 15,  5, BRAND_PLAIN, "AMD Opteron",                            PROCESSOR_FAMILY_OPTERON},
    {0, 15, 12, BRAND_PLAIN, "AMD Athlon 64",                          PROCESSOR_FAMILY_ATHLON_64},
    {},
};

static_assert(isTerminated(AMDProcSigs) && sizeof AMDProcSigs == (19 + 1) * sizeof(ProcSignature));

constexpr ProcSignature CyrixProcSigs[] = {
    {0,  4,  4, BRAND_PLAIN, "Cyrix MediaGX(tm)", PROCESSOR_FAMILY_MEDIAGX},
    {0,  5,  2, BRAND_PLAIN, "Cyrix 6x86(tm)",    PROCESSOR_FAMILY_6X86},
    {0,  5,  4, BRAND_PLAIN, "Cyrix GXm(tm)",     PROCESSOR_FAMILY_GXM},
    {0,  6,  0, BRAND_PLAIN, "Cyrix 6x86MX(tm)",  PROCESSOR_FAMILY_6X86MX},
    {},
};

static_assert(isTerminated(CyrixProcSigs) && sizeof CyrixProcSigs == (4 + 1) * sizeof(ProcSignature));

// clang-format on

unsigned long getEnum(const char* vendor, unsigned long family, unsigned long model, const char* modelName)
{
    const auto chipFamily = static_cast<uint32_t>(family);
    const auto chipModel = static_cast<uint32_t>(model);
    if (contains(vendor, "GenuineIntel"))
        return findIntel(chipFamily, chipModel, brandOf(modelName));
    if (contains(vendor, "AMD"))
        return findSignature(AMDProcSigs, chipFamily, chipModel);
    if (contains(vendor, "Cyrix"))
        return findSignature(CyrixProcSigs, chipFamily, chipModel);
    return PROCESSOR_FAMILY_UNKNOWN;
}
