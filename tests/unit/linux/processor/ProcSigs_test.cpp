#include "linux/processor/ProcSigs.h"

#include <gtest/gtest.h>
#include <iterator>

// Every row of the tables, with the family value that a look-up of its signature gives: not always the row's own, since
// OverDrive rows are never found and the first of several rows wins.
struct SignatureCase {
    uint32_t type;
    uint32_t family;
    uint32_t model;
    uint32_t brand;
    const char* description;
    uint32_t familyValue;
    uint32_t found;
};

// clang-format off
static constexpr SignatureCase INTEL[] = {
    {0, 4, 0, 0, "Intel486 DX", 6, 6},
    {0, 4, 1, 0, "Intel486 DX", 6, 6},
    {0, 4, 2, 0, "Intel486 SX", 6, 6},
    {0, 4, 3, 0, "Intel487, IntelDX2, or IntelDX2 OverDrive", 10, 10},
    {0, 4, 4, 0, "Intel486 SL", 6, 6},
    {0, 4, 5, 0, "IntelSX2", 6, 6},
    {0, 4, 7, 0, "Write-Back Enhanced IntelDX2", 6, 6},
    {0, 4, 8, 0, "IntelDX4", 6, 6},
    {1, 4, 8, 0, "IntelDX4 OverDrive", 6, 6},
    {0, 5, 1, 0, "Intel Pentium", 11, 11},
    {0, 5, 2, 0, "Intel Pentium", 11, 11},
    {0, 5, 1, 0, "Intel Pentium OverDrive for Pentium 60 or 66", 11, 11},
    {1, 5, 2, 0, "Intel Pentium OverDrive for Pentium 75, 90, 100, 120, or 133", 11, 11},
    {1, 5, 3, 0, "Intel Pentium OverDrive for Intel486", 11, 2},
    {0, 5, 4, 0, "Intel Pentium w/MMX technology", 14, 14},
    {0, 5, 8, 0, "Intel Pentium w/MMX technology", 14, 14},
    {1, 5, 4, 0, "Reserved for future OverDrive for Intel Pentium", 11, 14},
    {0, 6, 1, 0, "Intel Pentium Pro", 12, 12},
    {0, 6, 3, 0, "Intel Pentium II, Model 3", 13, 13},
    {0, 6, 5, 0, "Intel Pentium II, Model 5", 13, 13},
    {0, 6, 6, 0, "Intel Pentium II, Model 6", 13, 13},
    {0, 6, 3, 1, "Intel Celeron, Model 3", 15, 15},
    {0, 6, 5, 1, "Intel Celeron, Model 5", 15, 15},
    {0, 6, 6, 1, "Intel Celeron, Model 6", 15, 15},
    {0, 6, 3, 2, "Intel Pentium II Xeon, Model 3", 16, 16},
    {0, 6, 5, 2, "Intel Pentium II Xeon, Model 5", 16, 16},
    {0, 6, 6, 2, "Intel Pentium II Xeon, Model 6", 16, 16},
    {1, 6, 3, 0, "Reserved for future OverDrive for Intel Pentium Pro", 12, 13},
    {0, 5, 7, 0, "Intel Pentium", 11, 11},
    {0, 6, 7, 0, "Intel Pentium III", 17, 17},
    {0, 6, 7, 2, "Intel Pentium III Xeon", 17, 17},
    {0, 6, 8, 0, "Intel Pentium III", 17, 17},
    {0, 6, 8, 2, "Intel Pentium III Xeon", 17, 17},
    {0, 6, 8, 1, "Intel Celeron, Model 8", 15, 15},
    {0, 6, 9, 0, "Intel Pentium M", 185, 185},
    {0, 6, 10, 2, "Intel Pentium III Xeon, model A", 17, 17},
    {0, 6, 10, 0, "Intel Pentium III", 17, 17},
    {0, 6, 11, 0, "Intel Pentium III, model B", 17, 17},
    {0, 6, 11, 1, "Intel Celeron, Model 11", 15, 15},
    {0, 6, 13, 0, "Intel Pentium M", 185, 185},
    {1, 6, 3, 0, "Intel Pentium II OverDrive", 13, 13},
    {0, 15, 0, 0, "Intel Pentium 4", 178, 178},
    {0, 15, 1, 0, "Intel Pentium 4", 178, 178},
    {0, 15, 2, 0, "Intel Pentium 4", 178, 178},
    {0, 15, 3, 0, "Intel Pentium 4", 178, 178},
    {0, 15, 4, 0, "Intel Pentium 4", 178, 178},
    {0, 15, 0, 2, "Intel Xeon", 179, 179},
    {0, 15, 1, 2, "Intel Xeon", 179, 179},
    {0, 15, 2, 2, "Intel Xeon", 179, 179},
    {0, 15, 3, 2, "Intel Xeon", 179, 179},
    {0, 15, 4, 2, "Intel Xeon", 179, 179},
    {0, 15, 1, 1, "Intel Celeron", 15, 15},
    {0, 15, 2, 1, "Intel Celeron", 15, 15},
    {0, 15, 3, 1, "Intel Celeron", 15, 15},
    {0, 15, 4, 1, "Intel Celeron", 15, 15},
};

static constexpr SignatureCase AMD[] = {
    {0, 4, 0, 0, "AMD AM486 and AM5x86", 25, 25},
    {0, 5, 0, 0, "AMD-K5 Model 0", 25, 25},
    {0, 5, 1, 0, "AMD-K5 Model 1", 25, 25},
    {0, 5, 2, 0, "AMD-K5 Model 2", 25, 25},
    {0, 5, 3, 0, "AMD-K5 Model 3", 25, 25},
    {0, 5, 6, 0, "AMD-K6 Model 6", 26, 26},
    {0, 5, 7, 0, "AMD-K6 Model 7", 26, 26},
    {0, 5, 8, 0, "AMD-K6-2 Model 8", 27, 27},
    {0, 5, 9, 0, "AMD-K6-III Model 9", 28, 28},
    {0, 6, 1, 0, "AMD Athlon Model 1", 29, 29},
    {0, 6, 2, 0, "AMD Athlon Model 2", 29, 29},
    {0, 6, 3, 0, "AMD Duron", 29, 29},
    {0, 6, 4, 0, "AMD Athlon Model 4", 29, 29},
    {0, 6, 6, 0, "AMD Athlon (Palomino) / Duron (Morgan)", 29, 29},
    {0, 6, 7, 0, "AMD Duron (Morgan)", 29, 29},
    {0, 6, 8, 0, "AMD Athlon XP (Thoroughbred)", 29, 29},
    {0, 6, 10, 0, "AMD Athlon XP (Barton)", 29, 29},
    {0, 15, 5, 0, "AMD Opteron", 132, 132},
    {0, 15, 12, 0, "AMD Athlon 64", 131, 131},
};

static constexpr SignatureCase CYRIX[] = {
    {0, 4, 4, 0, "Cyrix MediaGX(tm)", 20, 20},
    {0, 5, 2, 0, "Cyrix 6x86(tm)", 21, 21},
    {0, 5, 4, 0, "Cyrix GXm(tm)", 22, 22},
    {0, 6, 0, 0, "Cyrix 6x86MX(tm)", 23, 23},
};
// clang-format on

static constexpr const char* MODEL_NAMES[] = {"Pentium", "Intel(R) Celeron(TM) CPU", "Intel(R) Xeon(TM) CPU 2.80GHz"};

template <size_t Rows>
static void expectSameRows(const ProcSignature* row, const SignatureCase (&cases)[Rows])
{
    for (const SignatureCase& expected : cases) {
        ASSERT_NE(row->description, nullptr);
        EXPECT_STREQ(row->description, expected.description);
        EXPECT_EQ(row->type, expected.type) << expected.description;
        EXPECT_EQ(row->family, expected.family) << expected.description;
        EXPECT_EQ(row->model, expected.model) << expected.description;
        EXPECT_EQ(row->brand, expected.brand) << expected.description;
        EXPECT_EQ(row->familyValue, expected.familyValue) << expected.description;
        ++row;
    }
    EXPECT_EQ(row->type | row->family | row->model | row->brand | row->familyValue, 0u);
    EXPECT_EQ(row->description, nullptr);
}

template <size_t Rows>
static void expectFound(const char* vendor, const SignatureCase (&cases)[Rows])
{
    for (const SignatureCase& expected : cases) {
        EXPECT_EQ(getEnum(vendor, expected.family, expected.model, MODEL_NAMES[expected.brand]), expected.found)
            << expected.type << ' ' << expected.description;
    }
}

TEST(ProcSigs, theIntelTableHasIts55RowsInOrder)
{
    static_assert(std::size(INTEL) == 55);
    expectSameRows(IntelProcSigs, INTEL);
}

TEST(ProcSigs, theAmdTableHasIts19RowsInOrder)
{
    static_assert(std::size(AMD) == 19);
    expectSameRows(AMDProcSigs, AMD);
}

TEST(ProcSigs, theCyrixTableHasIts4RowsInOrder)
{
    static_assert(std::size(CYRIX) == 4);
    expectSameRows(CyrixProcSigs, CYRIX);
}

TEST(ProcSigs, everySignatureIsFoundUnderItsVendor)
{
    expectFound("GenuineIntel", INTEL);
    expectFound("AuthenticAMD", AMD);
    expectFound("CyrixInstead", CYRIX);
}

TEST(ProcSigs, aSignatureThatIsInNoTableIsUnknown)
{
    for (unsigned long family = 0; family < 20; ++family) {
        for (unsigned long model = 0; model < 20; ++model) {
            for (uint32_t brand = 0; brand < 3; ++brand) {
                bool known = false;
                for (const SignatureCase& row : INTEL)
                    known =
                        known || (row.type == 0 && row.family == family && row.model == model && row.brand == brand);
                const unsigned long found = getEnum("GenuineIntel", family, model, MODEL_NAMES[brand]);
                EXPECT_EQ(found != 2, known) << family << ' ' << model << ' ' << brand;
            }
        }
    }
    EXPECT_EQ(getEnum("AuthenticAMD", 15, 6, ""), 2u);
    EXPECT_EQ(getEnum("AuthenticAMD", 0, 0, ""), 2u);
    EXPECT_EQ(getEnum("CyrixInstead", 6, 1, ""), 2u);
    EXPECT_EQ(getEnum("CyrixInstead", 0, 0, ""), 2u);
}

TEST(ProcSigs, aCeleronIsFoundByItsModelName)
{
    EXPECT_EQ(getEnum("GenuineIntel", 6, 8, "Celeron (Coppermine)"), 15u);
    EXPECT_EQ(getEnum("GenuineIntel", 6, 8, "Xeon Celeron"), 15u) << "Celeron is looked for first";
    EXPECT_EQ(getEnum("GenuineIntel", 6, 8, "celeron"), 17u) << "case counts";
}

TEST(ProcSigs, theVendorIsLookedForInsideTheText)
{
    EXPECT_EQ(getEnum("my AMD processor", 15, 5, ""), 132u);
    EXPECT_EQ(getEnum("AMD GenuineIntel", 6, 8, ""), 17u) << "the first vendor in order wins";
    EXPECT_EQ(getEnum("CentaurHauls", 6, 7, ""), 2u);
    EXPECT_EQ(getEnum("", 6, 7, ""), 2u);
}

TEST(ProcSigs, theBrandOfAnAmdProcessorDoesNotCount)
{
    EXPECT_EQ(getEnum("AuthenticAMD", 6, 3, "Celeron"), 29u);
}
