// The built-in EBCDIC tables, every byte, against the C library.

#include "codeset/EbcdicTables.h"

#include <bitset>
#include <gtest/gtest.h>

#include "codeset/tables/CodeSets.h"
#include "codeset/tables/IconvCodec.h"

namespace
{

std::string byteText(unsigned byte)
{
    return std::string(1, static_cast<char>(byte));
}

// The bytes that are their character of code page 037 in every shipped EBCDIC code set that this C library has.
std::bitset<256> sameEverywhere()
{
    std::bitset<256> same;
    same.set();
    for (const ShippedCodeSet& codeSet : kShippedCodeSets) {
        IconvCodec codec(codeSet.iconvName);
        if (!codec.isKnown() || (codeSet.family != Family::EbcdicSbcs && codeSet.family != Family::EbcdicDbcs))
            continue;
        for (unsigned byte = 0; byte < 256; ++byte)
            same[byte] = same[byte] && codec.decodeOne(byteText(byte)) == def_eb_to_ucs[byte];
    }
    return same;
}

TEST(EbcdicTablesTest, theCharactersAreThoseOfCodePage037)
{
    IconvCodec codec("IBM037");
    if (!codec.isKnown())
        GTEST_SKIP() << "this C library has no IBM037";
    for (unsigned byte = 0; byte < 256; ++byte)
        EXPECT_EQ(codec.decodeOne(byteText(byte)), def_eb_to_ucs[byte]) << byte;
}

TEST(EbcdicTablesTest, invariantAreTheGraphicCharactersThatAllPagesHaveAtOnePlace)
{
    static constexpr unsigned kFirstGraphic = 0x40;
    static constexpr unsigned kEightOnes = 0xFF; // a control
    if (!IconvCodec("IBM1047").isKnown() || !IconvCodec("IBM290").isKnown())
        GTEST_SKIP() << "this C library has too few EBCDIC code sets";
    const std::bitset<256> same = sameEverywhere();
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool graphic = byte >= kFirstGraphic && byte != kEightOnes;
        // The quotation mark belongs to the set; page 1026 alone has put it elsewhere.
        const bool invariant = graphic && (same[byte] || byte == 0x7F);
        EXPECT_EQ(invar_eb_to_ucs[byte], invariant) << byte;
    }
}

} // namespace
