// Every shipped table against the C library: each character of the code set and each Unicode character, both ways.
//
// Where the results differ on purpose:
// - The families based on ASCII copy the bytes below 0x80, and write the ASCII characters as these bytes, also where
//   the code set has other characters there (kAsciiDifferences).
// - Tables of the single- and double-byte families and the listed part of GB18030 hold 16-bit values, one a code:
//   characters above U+FFFF and codes that stand for two characters read as unknown.
// - A character of a single-byte code set is one byte: what iconv writes as a letter and a mark has no mapping.
// - The 16-bit value 0xFFFF is "no mapping": the GB18030 code of U+FFFF, no character, reads as unknown.
// - GB18030 computes all characters above U+FFFF, also the six that iconv gives two-byte codes.

#include <map>
#include <set>

#include "codeset/tables/CodeSets.h"
#include "codeset/tables/IconvCodec.h"
#include "tests/unit/codeset/CodeSetFixture.h"

namespace
{

// Bytes below 0x80 that iconv takes for other characters than ASCII's, or for none.
const std::map<std::string, std::set<unsigned>> kAsciiDifferences = {
    {"CP864", {0x25}},          // iconv: the Arabic percent sign
    {"SHIFTJIS", {0x5C, 0x7E}}, // iconv: yen sign, overline
};

// Characters above ASCII that iconv, too, writes as bytes below 0x80: they come back as ASCII's.
const std::map<std::string, std::set<uint32_t>> kWrittenAsAscii = {
    {"CP864", {0x66A}},           // Arabic percent sign
    {"CP932", {0xA5, 0x203E}},    // yen sign, overline
    {"EUCJP", {0xA5, 0x203E}},    //
    {"EUCJPMS", {0xA5, 0x203E}},  //
    {"SHIFTJIS", {0xA5, 0x203E}}, //
};

template <class Number>
std::set<Number> listed(const std::map<std::string, std::set<Number>>& lists, const char* table)
{
    const auto list = lists.find(table);
    return list == lists.end() ? std::set<Number>() : list->second;
}

// Characters above U+FFFF for which iconv has a code of two bytes.
const std::map<uint32_t, std::string> kGb18030Computed = {
    {0x20087, "\x95\x32\x90\x31"}, {0x20089, "\x95\x32\x90\x33"}, {0x200CC, "\x95\x32\x97\x30"},
    {0x215D7, "\x95\x36\xB9\x37"}, {0x2298F, "\x96\x30\xBA\x35"}, {0x241FE, "\x96\x35\xB6\x30"},
};

std::string byteText(std::initializer_list<unsigned> numbers)
{
    std::string bytes;
    for (const unsigned number : numbers)
        bytes += static_cast<char>(number);
    return bytes;
}

class IconvAgreementTest : public CodeSetTest, public ::testing::WithParamInterface<ShippedCodeSet>
{
protected:
    void SetUp() override
    {
        CodeSetTest::SetUp();
        if (!codec.isKnown())
            GTEST_SKIP() << "this C library has no " << GetParam().iconvName;
        handle = kst_cs_new(GetParam().table);
        ASSERT_NE(handle, nullptr);
    }

    void TearDown() override
    {
        kst_cs_free(handle);
        CodeSetTest::TearDown();
    }

    bool isEbcdicDouble() const { return GetParam().family == Family::EbcdicDbcs; }
    bool isSingle() const { return GetParam().family == Family::AsciiSbcs || GetParam().family == Family::EbcdicSbcs; }
    bool isAsciiBased() const { return !isEbcdicDouble() && GetParam().family != Family::EbcdicSbcs; }
    bool hasSupplementary() const
    {
        return GetParam().family == Family::AsciiMbcs || GetParam().family == Family::Gb18030;
    }

    // The one conversion call without the shift handling around it: result, consumed bytes, output and new count.
    struct Outcome {
        int result;
        size_t consumed;
        std::string text;
        unsigned long substituted;
        bool operator==(const Outcome&) const = default;
    };

    Outcome outcomeOf(const std::string& bytes) const
    {
        const unsigned long before = kst_get_subst_count(handle);
        char buffer[32];
        const char* src = bytes.data();
        char* dst = buffer;
        size_t left = bytes.size();
        size_t room = sizeof buffer;
        kst_to_utf8_r(handle, nullptr, nullptr, nullptr, nullptr);
        const int result = kst_to_utf8_r(handle, &src, &left, &dst, &room);
        return {result, bytes.size() - left, std::string(buffer, dst), kst_get_subst_count(handle) - before};
    }

    void expectOutcome(const std::string& bytes, const Outcome& expected)
    {
        const Outcome outcome = outcomeOf(bytes);
        if (outcome == expected || ++failures > 10)
            return;
        ADD_FAILURE() << GetParam().table << ": " << ::testing::PrintToString(bytes) << " gave " << outcome.result
                      << ", " << outcome.consumed << " bytes consumed, \"" << outcome.text << "\", "
                      << outcome.substituted << " substituted; expected " << expected.result << ", "
                      << expected.consumed << ", \"" << expected.text << "\", " << expected.substituted;
    }

    // What iconv makes of the bytes, as far as the table can hold it, else one unknown character.
    void checkCharacter(const std::string& bytes)
    {
        const int64_t codePoint = codec.decodeOne(bytes);
        const bool known = codePoint >= 0 && (codePoint < 0xFFFF || (codePoint > 0xFFFF && holdsSupplementary(bytes)));
        const Outcome unknown = {KST_DONE, bytes.size(), "?", 1};
        expectOutcome(bytes,
                      known ? Outcome{KST_DONE, bytes.size(), utf8(static_cast<uint32_t>(codePoint)), 0} : unknown);
        const kst_wchar ucs2 = known && codePoint < 0x10000 ? static_cast<kst_wchar>(codePoint) : u'?';
        if (toUcs2(handle, bytes) != std::u16string(1, ucs2) && ++failures <= 10)
            ADD_FAILURE() << GetParam().table << ": " << ::testing::PrintToString(bytes) << " gave other UCS-2";
        mapped += known;
    }

    bool holdsSupplementary(const std::string& bytes) const
    {
        return GetParam().family == Family::AsciiMbcs || (GetParam().family == Family::Gb18030 && bytes.size() == 4);
    }

    // The length of the characters that begin with the bytes, found by asking iconv what goes on behind them.
    unsigned lengthOf(const std::string& bytes)
    {
        std::vector<uint32_t> none;
        const unsigned length = static_cast<unsigned>(bytes.size());
        if (codec.decode(bytes, none) != EINVAL)
            return length;
        unsigned longest = length + 1;
        if (GetParam().family == Family::AsciiDbcs)
            return longest;
        for (unsigned trail = 0x80; trail < 0x100; ++trail)
            longest = std::max(longest, lengthOf(bytes + static_cast<char>(trail)));
        return longest;
    }

    // Every sequence of the length that begins with prefix, and that each of their beginnings is incomplete.
    void checkBehind(const std::string& prefix, unsigned length)
    {
        if (prefix.size() == length)
            return checkCharacter(prefix);
        expectOutcome(prefix, {KST_INCOMPLETE, 0, "", 0});
        // Two-byte characters may have any trail byte, longer ones only those that some character has.
        const unsigned first = GetParam().family == Family::AsciiDbcs ? 0 : 0x80;
        for (unsigned byte = first; byte < 0x100; ++byte)
            checkBehind(prefix + static_cast<char>(byte), length);
    }

    // The bytes behind the first are those that GB18030 text has; all others share the numbers of these.
    void checkGb18030()
    {
        expectOutcome("\x80", {KST_DONE, 1, "?", 1});
        expectOutcome("\xFF", {KST_DONE, 1, "?", 1});
        for (unsigned b1 = 0x81; b1 < 0xFF; ++b1) {
            expectOutcome(byteText({b1}), {KST_INCOMPLETE, 0, "", 0});
            for (unsigned b2 = 0x40; b2 < 0xFF; ++b2)
                checkCharacter(byteText({b1, b2}));
            for (unsigned b2 = 0x30; b2 < 0x3A; ++b2) {
                expectOutcome(byteText({b1, b2}), {KST_INCOMPLETE, 0, "", 0});
                expectOutcome(byteText({b1, b2, 0x81}), {KST_INCOMPLETE, 0, "", 0});
                for (unsigned b3 = 0x81; b3 < 0xFF; ++b3)
                    for (unsigned b4 = 0x30; b4 < 0x3A; ++b4)
                        checkCharacter(byteText({b1, b2, b3, b4}));
            }
        }
    }

    // Double-byte EBCDIC: single bytes, then every pair between shifts.
    void checkShifted()
    {
        for (unsigned byte = 0; byte < 0x100; ++byte)
            if (byte != 0x0E && byte != 0x0F)
                checkCharacter(byteText({byte}));
        for (unsigned lead = 0x40; lead < 0xFF; ++lead) {
            expectOutcome(byteText({0x0E, lead}), {KST_INCOMPLETE, 1, "", 0});
            for (unsigned trail = 0; trail < 0x100; ++trail)
                checkCharacter(byteText({0x0E, lead, trail, 0x0F}));
        }
    }

    // What iconv writes for the character, as far as the code set's family has such a form, else the substitution.
    void checkWritten(uint32_t c)
    {
        const std::string bytes = expectedBytes(c);
        const unsigned long before = kst_get_subst_count(handle);
        const std::string written = fromUtf8(handle, utf8(c));
        const unsigned long substituted = kst_get_subst_count(handle) - before;
        mapped += !bytes.empty();
        if (isAsciiBased() && !bytes.empty() && written.size() == 1 && (written[0] & 0x80) == 0)
            writtenAsAscii.insert(c);
        const std::string expected = !bytes.empty() ? bytes : isAsciiBased() ? "?" : "\x6F";
        bool agrees = written == expected && substituted == bytes.empty();
        if (c < 0x10000)
            agrees = agrees && fromUcs2(handle, {static_cast<kst_wchar>(c)}) == expected;
        if (!agrees && ++failures <= 10)
            ADD_FAILURE() << GetParam().table << ": U+" << std::hex << c << " gave "
                          << ::testing::PrintToString(written) << ", " << substituted << " substituted; expected "
                          << ::testing::PrintToString(expected);
    }

    std::string expectedBytes(uint32_t c)
    {
        std::string bytes = codec.encode(c);
        if (bytes.empty() || (isSingle() && bytes.size() > 1) || (c > 0xFFFF && !hasSupplementary()))
            return "";
        const auto computed = kGb18030Computed.find(c);
        if (GetParam().family == Family::Gb18030 && computed != kGb18030Computed.end())
            return computed->second;
        return bytes;
    }

    IconvCodec codec{GetParam().iconvName};
    kst_handle handle = nullptr;
    int failures = 0;
    std::set<uint32_t> writtenAsAscii;
    unsigned mapped = 0;
};

TEST_P(IconvAgreementTest, bytesBelow80AreAsciiButForTheListedDifferences)
{
    if (!isAsciiBased())
        return;
    std::set<unsigned> differences;
    for (unsigned byte = 0; byte < 0x80; ++byte) {
        expectOutcome(byteText({byte}), {KST_DONE, 1, byteText({byte}), 0});
        EXPECT_EQ(fromUtf8(handle, byteText({byte})), byteText({byte}));
        EXPECT_EQ(fromUcs2(handle, {static_cast<kst_wchar>(byte)}), byteText({byte}));
        if (codec.decodeOne(byteText({byte})) != byte)
            differences.insert(byte);
    }
    EXPECT_EQ(differences, listed(kAsciiDifferences, GetParam().table));
}

TEST_P(IconvAgreementTest, everyCharacterOfTheCodeSetReadsAsIconvReadsIt)
{
    switch (GetParam().family) {
    case Family::Gb18030:
        return checkGb18030();
    case Family::EbcdicDbcs:
        return checkShifted();
    case Family::EbcdicSbcs:
        for (unsigned byte = 0; byte < 0x100; ++byte)
            checkCharacter(byteText({byte}));
        break;
    default:
        for (unsigned byte = 0x80; byte < 0x100; ++byte)
            checkBehind(byteText({byte}), lengthOf(byteText({byte})));
    }
    EXPECT_TRUE(mapped > 60 || std::string(GetParam().table) == "ANSIX341968");
}

TEST_P(IconvAgreementTest, everyUnicodeCharacterWritesAsIconvWritesIt)
{
    // Beyond the planes that tables hold a sample shows that everything is unknown.
    const uint32_t stepAbove = hasSupplementary() ? 1 : 257;
    for (uint32_t c = isAsciiBased() ? 0x80 : 0; c <= 0x10FFFF; c += c < 0x10000 ? 1 : stepAbove)
        if (c < 0xD800 || c > 0xDFFF)
            checkWritten(c);
    EXPECT_EQ(writtenAsAscii, listed(kWrittenAsAscii, GetParam().table));
    EXPECT_TRUE(mapped > 60 || std::string(GetParam().table) == "ANSIX341968");
}

INSTANTIATE_TEST_SUITE_P(Shipped, IconvAgreementTest, ::testing::ValuesIn(kShippedCodeSets),
                         [](const auto& parameter) { return std::string(parameter.param.table); });

} // namespace
