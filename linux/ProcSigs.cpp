#include "linux/ProcSigs.h"

#include <cstddef>
#include <cstring>

namespace
{

// The values of PROCESSOR_FAMILY_ENUM_DEF that the tables lead to.
enum : uint32_t {
    FAMILY_UNKNOWN = 2,
    FAMILY_80486 = 6,
    FAMILY_80487 = 10,
    FAMILY_PENTIUM = 11,
    FAMILY_PENTIUM_PRO = 12,
    FAMILY_PENTIUM_II = 13,
    FAMILY_PENTIUM_MMX = 14,
    FAMILY_CELERON = 15,
    FAMILY_PENTIUM_II_XEON = 16,
    FAMILY_PENTIUM_III = 17,
    FAMILY_MEDIAGX = 20,
    FAMILY_6X86 = 21,
    FAMILY_GXM = 22,
    FAMILY_6X86MX = 23,
    FAMILY_K5 = 25,
    FAMILY_K6 = 26,
    FAMILY_K6_2 = 27,
    FAMILY_K6_3 = 28,
    FAMILY_K7 = 29,
    FAMILY_ATHLON_64 = 131,
    FAMILY_OPTERON = 132,
    FAMILY_PENTIUM_4 = 178,
    FAMILY_XEON = 179,
    FAMILY_PENTIUM_M = 185,
};

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

} // namespace

// The first match wins, so the order of the rows counts: OverDrive rows, which no lookup asks for, and repeated
// signatures stand for the record only.
// clang-format off
// type, family, model, brand, description, family value
constexpr ProcSignature IntelProcSigs[] = {
    {0,  4,  0, BRAND_PLAIN,   "Intel486 DX",                                                  FAMILY_80486},
    {0,  4,  1, BRAND_PLAIN,   "Intel486 DX",                                                  FAMILY_80486},
    {0,  4,  2, BRAND_PLAIN,   "Intel486 SX",                                                  FAMILY_80486},
    {0,  4,  3, BRAND_PLAIN,   "Intel487, IntelDX2, or IntelDX2 OverDrive",                    FAMILY_80487},
    {0,  4,  4, BRAND_PLAIN,   "Intel486 SL",                                                  FAMILY_80486},
    {0,  4,  5, BRAND_PLAIN,   "IntelSX2",                                                     FAMILY_80486},
    {0,  4,  7, BRAND_PLAIN,   "Write-Back Enhanced IntelDX2",                                 FAMILY_80486},
    {0,  4,  8, BRAND_PLAIN,   "IntelDX4",                                                     FAMILY_80486},
    {1,  4,  8, BRAND_PLAIN,   "IntelDX4 OverDrive",                                           FAMILY_80486},
    {0,  5,  1, BRAND_PLAIN,   "Intel Pentium",                                                FAMILY_PENTIUM},
    {0,  5,  2, BRAND_PLAIN,   "Intel Pentium",                                                FAMILY_PENTIUM},
    {0,  5,  1, BRAND_PLAIN,   "Intel Pentium OverDrive for Pentium 60 or 66",                 FAMILY_PENTIUM},
    {1,  5,  2, BRAND_PLAIN,   "Intel Pentium OverDrive for Pentium 75, 90, 100, 120, or 133", FAMILY_PENTIUM},
    {1,  5,  3, BRAND_PLAIN,   "Intel Pentium OverDrive for Intel486",                         FAMILY_PENTIUM},
    {0,  5,  4, BRAND_PLAIN,   "Intel Pentium w/MMX technology",                               FAMILY_PENTIUM_MMX},
    {0,  5,  8, BRAND_PLAIN,   "Intel Pentium w/MMX technology",                               FAMILY_PENTIUM_MMX},
    {1,  5,  4, BRAND_PLAIN,   "Reserved for future OverDrive for Intel Pentium",              FAMILY_PENTIUM},
    {0,  6,  1, BRAND_PLAIN,   "Intel Pentium Pro",                                            FAMILY_PENTIUM_PRO},
    {0,  6,  3, BRAND_PLAIN,   "Intel Pentium II, Model 3",                                    FAMILY_PENTIUM_II},
    {0,  6,  5, BRAND_PLAIN,   "Intel Pentium II, Model 5",                                    FAMILY_PENTIUM_II},
    {0,  6,  6, BRAND_PLAIN,   "Intel Pentium II, Model 6",                                    FAMILY_PENTIUM_II},
    {0,  6,  3, BRAND_CELERON, "Intel Celeron, Model 3",                                       FAMILY_CELERON},
    {0,  6,  5, BRAND_CELERON, "Intel Celeron, Model 5",                                       FAMILY_CELERON},
    {0,  6,  6, BRAND_CELERON, "Intel Celeron, Model 6",                                       FAMILY_CELERON},
    {0,  6,  3, BRAND_XEON,    "Intel Pentium II Xeon, Model 3",                               FAMILY_PENTIUM_II_XEON},
    {0,  6,  5, BRAND_XEON,    "Intel Pentium II Xeon, Model 5",                               FAMILY_PENTIUM_II_XEON},
    {0,  6,  6, BRAND_XEON,    "Intel Pentium II Xeon, Model 6",                               FAMILY_PENTIUM_II_XEON},
    {1,  6,  3, BRAND_PLAIN,   "Reserved for future OverDrive for Intel Pentium Pro",          FAMILY_PENTIUM_PRO},
    {0,  5,  7, BRAND_PLAIN,   "Intel Pentium",                                                FAMILY_PENTIUM},
    {0,  6,  7, BRAND_PLAIN,   "Intel Pentium III",                                            FAMILY_PENTIUM_III},
    {0,  6,  7, BRAND_XEON,    "Intel Pentium III Xeon",                                       FAMILY_PENTIUM_III},
    {0,  6,  8, BRAND_PLAIN,   "Intel Pentium III",                                            FAMILY_PENTIUM_III},
    {0,  6,  8, BRAND_XEON,    "Intel Pentium III Xeon",                                       FAMILY_PENTIUM_III},
    {0,  6,  8, BRAND_CELERON, "Intel Celeron, Model 8",                                       FAMILY_CELERON},
    {0,  6,  9, BRAND_PLAIN,   "Intel Pentium M",                                              FAMILY_PENTIUM_M},
    {0,  6, 10, BRAND_XEON,    "Intel Pentium III Xeon, model A",                              FAMILY_PENTIUM_III},
    {0,  6, 10, BRAND_PLAIN,   "Intel Pentium III",                                            FAMILY_PENTIUM_III},
    {0,  6, 11, BRAND_PLAIN,   "Intel Pentium III, model B",                                   FAMILY_PENTIUM_III},
    {0,  6, 11, BRAND_CELERON, "Intel Celeron, Model 11",                                      FAMILY_CELERON},
    {0,  6, 13, BRAND_PLAIN,   "Intel Pentium M",                                              FAMILY_PENTIUM_M},
    {1,  6,  3, BRAND_PLAIN,   "Intel Pentium II OverDrive",                                   FAMILY_PENTIUM_II},
    {0, 15,  0, BRAND_PLAIN,   "Intel Pentium 4",                                              FAMILY_PENTIUM_4},
    {0, 15,  1, BRAND_PLAIN,   "Intel Pentium 4",                                              FAMILY_PENTIUM_4},
    {0, 15,  2, BRAND_PLAIN,   "Intel Pentium 4",                                              FAMILY_PENTIUM_4},
    {0, 15,  3, BRAND_PLAIN,   "Intel Pentium 4",                                              FAMILY_PENTIUM_4},
    {0, 15,  4, BRAND_PLAIN,   "Intel Pentium 4",                                              FAMILY_PENTIUM_4},
    {0, 15,  0, BRAND_XEON,    "Intel Xeon",                                                   FAMILY_XEON},
    {0, 15,  1, BRAND_XEON,    "Intel Xeon",                                                   FAMILY_XEON},
    {0, 15,  2, BRAND_XEON,    "Intel Xeon",                                                   FAMILY_XEON},
    {0, 15,  3, BRAND_XEON,    "Intel Xeon",                                                   FAMILY_XEON},
    {0, 15,  4, BRAND_XEON,    "Intel Xeon",                                                   FAMILY_XEON},
    {0, 15,  1, BRAND_CELERON, "Intel Celeron",                                                FAMILY_CELERON},
    {0, 15,  2, BRAND_CELERON, "Intel Celeron",                                                FAMILY_CELERON},
    {0, 15,  3, BRAND_CELERON, "Intel Celeron",                                                FAMILY_CELERON},
    {0, 15,  4, BRAND_CELERON, "Intel Celeron",                                                FAMILY_CELERON},
    {},
};
static_assert(isTerminated(IntelProcSigs) && sizeof IntelProcSigs == (55 + 1) * sizeof(ProcSignature));

constexpr ProcSignature AMDProcSigs[] = {
    {0,  4,  0, BRAND_PLAIN, "AMD AM486 and AM5x86",                   FAMILY_K5},
    {0,  5,  0, BRAND_PLAIN, "AMD-K5 Model 0",                         FAMILY_K5},
    {0,  5,  1, BRAND_PLAIN, "AMD-K5 Model 1",                         FAMILY_K5},
    {0,  5,  2, BRAND_PLAIN, "AMD-K5 Model 2",                         FAMILY_K5},
    {0,  5,  3, BRAND_PLAIN, "AMD-K5 Model 3",                         FAMILY_K5},
    {0,  5,  6, BRAND_PLAIN, "AMD-K6 Model 6",                         FAMILY_K6},
    {0,  5,  7, BRAND_PLAIN, "AMD-K6 Model 7",                         FAMILY_K6},
    {0,  5,  8, BRAND_PLAIN, "AMD-K6-2 Model 8",                       FAMILY_K6_2},
    {0,  5,  9, BRAND_PLAIN, "AMD-K6-III Model 9",                     FAMILY_K6_3},
    {0,  6,  1, BRAND_PLAIN, "AMD Athlon Model 1",                     FAMILY_K7},
    {0,  6,  2, BRAND_PLAIN, "AMD Athlon Model 2",                     FAMILY_K7},
    {0,  6,  3, BRAND_PLAIN, "AMD Duron",                              FAMILY_K7},
    {0,  6,  4, BRAND_PLAIN, "AMD Athlon Model 4",                     FAMILY_K7},
    {0,  6,  6, BRAND_PLAIN, "AMD Athlon (Palomino) / Duron (Morgan)", FAMILY_K7},
    {0,  6,  7, BRAND_PLAIN, "AMD Duron (Morgan)",                     FAMILY_K7},
    {0,  6,  8, BRAND_PLAIN, "AMD Athlon XP (Thoroughbred)",           FAMILY_K7},
    {0,  6, 10, BRAND_PLAIN, "AMD Athlon XP (Barton)",                 FAMILY_K7},
    {0, 15,  5, BRAND_PLAIN, "AMD Opteron",                            FAMILY_OPTERON},
    {0, 15, 12, BRAND_PLAIN, "AMD Athlon 64",                          FAMILY_ATHLON_64},
    {},
};
static_assert(isTerminated(AMDProcSigs) && sizeof AMDProcSigs == (19 + 1) * sizeof(ProcSignature));

constexpr ProcSignature CyrixProcSigs[] = {
    {0,  4,  4, BRAND_PLAIN, "Cyrix MediaGX(tm)", FAMILY_MEDIAGX},
    {0,  5,  2, BRAND_PLAIN, "Cyrix 6x86(tm)",    FAMILY_6X86},
    {0,  5,  4, BRAND_PLAIN, "Cyrix GXm(tm)",     FAMILY_GXM},
    {0,  6,  0, BRAND_PLAIN, "Cyrix 6x86MX(tm)",  FAMILY_6X86MX},
    {},
};
static_assert(isTerminated(CyrixProcSigs) && sizeof CyrixProcSigs == (4 + 1) * sizeof(ProcSignature));
// clang-format on

static bool contains(const char* text, const char* part)
{
    return strstr(text, part) != nullptr;
}

static uint32_t brandOf(const char* modelName)
{
    if (contains(modelName, "Celeron"))
        return BRAND_CELERON;
    return contains(modelName, "Xeon") ? BRAND_XEON : BRAND_PLAIN;
}

static unsigned long findIntel(uint32_t family, uint32_t model, uint32_t brand)
{
    for (const ProcSignature* row = IntelProcSigs; row->description != nullptr; ++row) {
        if (row->type == 0 && row->family == family && row->model == model && row->brand == brand)
            return row->familyValue;
    }
    return FAMILY_UNKNOWN;
}

static unsigned long findSignature(const ProcSignature* row, uint32_t family, uint32_t model)
{
    for (; row->description != nullptr; ++row) {
        if (row->family == family && row->model == model)
            return row->familyValue;
    }
    return FAMILY_UNKNOWN;
}

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
    return FAMILY_UNKNOWN;
}
