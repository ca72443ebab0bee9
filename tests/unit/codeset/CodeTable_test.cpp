// Table files, sound and hostile. Under the sanitizers the tests also show that nothing is read outside the file.

#include "codeset/CodeTable.h"

#include <chrono>
#include <random>

#include "tests/unit/codeset/CodeSetFixture.h"
#include "tests/unit/codeset/SmallTables.h"

using namespace TableLayout;

namespace
{

class CodeTableTest : public CodeSetTest
{
protected:
    // A handle for the table with these bytes.
    kst_handle open(const std::string& bytes) const
    {
        write("T", bytes);
        return kst_cs_new("./T");
    }

    // Converts all that could lead a look-up astray, in all directions.
    // All first bytes with what may follow them.
    static std::string manyBytes()
    {
        std::string text;
        for (unsigned first = 0; first < 256; ++first)
            for (const unsigned second : {0x00U, 0x0EU, 0x30U, 0x40U, 0x81U, 0xA1U, 0xFEU, 0xFFU})
                for (const unsigned third : {0x21U, 0x80U, 0xA1U, 0xFFU})
                    text += {static_cast<char>(first), static_cast<char>(second), static_cast<char>(third)};
        return text;
    }

    static std::string manyCharacters()
    {
        std::string unicode;
        for (uint32_t c = 0; c <= 0x10FFFF; c += c < 0x500 ? 1 : 0x101)
            unicode += utf8(c);
        return unicode;
    }

    static void exercise(kst_handle handle)
    {
        static const std::string text = manyBytes();
        static const std::string unicode = manyCharacters();
        static const auto ucs2 = toUcs2(nullptr, unicode);
        toUtf8(handle, text);
        toUtf8(handle, "\x0E" + text);
        toUcs2(handle, text);
        fromUtf8(handle, unicode);
        fromUcs2(handle, ucs2);
    }
};

TEST_F(CodeTableTest, singleByteTable)
{
    const kst_handle handle = open(SmallTables::singleByte());
    ASSERT_NE(handle, nullptr);
    EXPECT_STREQ(kst_get_cs_name(handle), "SMALLSB");
    EXPECT_EQ(toUtf8(handle, "a\xE9\xEA"), "a\xC3\xA9?");
    EXPECT_EQ(kst_get_subst_count(handle), 1u);
    EXPECT_EQ(fromUtf8(handle, "a\xC3\xA9\xC3\xAA"), "a\xE9?");
    EXPECT_EQ(kst_get_subst_count(handle), 2u);
    kst_cs_free(handle);
}

// Long enough that blocks are converted, of ASCII alone and with other characters.
TEST_F(CodeTableTest, asciiIsAsciiWhateverASingleByteTableSays)
{
    const kst_handle handle = open(SmallTables::singleByte());
    ASSERT_NE(handle, nullptr);
    std::string bytes;
    std::string utf8;
    std::u16string ucs2;
    for (char c = 1; c < 0x7F; ++c) {
        const bool mixed = c % 3 == 0 || c > 0x40;
        bytes += mixed ? std::string{c} + "\xE9" : std::string{c};
        utf8 += mixed ? std::string{c} + "\xC3\xA9" : std::string{c};
        ucs2 += mixed ? std::u16string{static_cast<char16_t>(c), u'\u00E9'} : std::u16string{static_cast<char16_t>(c)};
    }
    EXPECT_EQ(toUtf8(handle, bytes), utf8);
    EXPECT_EQ(fromUtf8(handle, utf8), bytes);
    std::u16string wide(bytes.size(), u'\0');
    EXPECT_EQ(kst_to_ucs2(handle, bytes.data(), static_cast<long>(bytes.size()), wide.data(), wide.size()),
              ucs2.size());
    EXPECT_EQ(wide, ucs2);
    std::string back(400, '\0');
    back.resize(kst_from_ucs2(handle, ucs2.data(), static_cast<long>(ucs2.size()), back.data(), back.size()));
    EXPECT_EQ(back, bytes);
    EXPECT_EQ(kst_get_subst_count(handle), 0u);
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, ebcdicTablesWithoutAsciiReplaceIt)
{
    for (const auto& bytes : {SmallTables::with16(SmallTables::singleByte(), kMarkerOffset, 0x1100),
                              SmallTables::doubleByte(Family::EbcdicDbcs)}) {
        const kst_handle handle = open(bytes);
        ASSERT_NE(handle, nullptr);
        EXPECT_EQ(fromUtf8(handle, "0123456789abcdefghij"), std::string(20, '\x6F'));
        EXPECT_EQ(kst_get_subst_count(handle), 20u);
        kst_cs_free(handle);
    }
}

TEST_F(CodeTableTest, doubleByteTable)
{
    const kst_handle handle = open(SmallTables::doubleByte());
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "a\xA1\xB0\xA1"), "a\xC3\xA9\xE4\xB8\x80");
    EXPECT_EQ(kst_get_subst_count(handle), 0u);
    EXPECT_EQ(toUtf8(handle, "\xB0zz"), "?z") << "the trail byte goes with its lead, whatever it is";
    EXPECT_EQ(toUtf8(handle, "\xFFz"), "?z") << "a byte of no class goes alone";
    EXPECT_EQ(toUtf8(handle, "\xC0\xA1z"), "?z") << "a row that the table does not have";
    EXPECT_EQ(kst_get_subst_count(handle), 3u);
    EXPECT_EQ(fromUtf8(handle, "a\xC3\xA9\xC3\xAA\xC3\xAB"), "a\xA1\xB0\xA1?");
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, aRowThatEndsWithTheFileReadsAsUnmappedBehindIt)
{
    std::string bytes = SmallTables::doubleByte();
    const size_t area = load32(reinterpret_cast<const unsigned char*>(bytes.data()));
    bytes = SmallTables::with32(bytes, kReverseIndexOffset, 0).substr(0, area + kDbcsRowSize + 2 * 0xA1);
    kst_handle handle = open(bytes + "\x34\x12");
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "\xB0\xA1\xB0\xA2"), "\xE1\x88\xB4?");
    kst_cs_free(handle);
    handle = open(bytes);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "\xB0\xA1\xB0\xFF"), "??");
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, multiByteTableWithCharactersOfEveryLength)
{
    const kst_handle handle = open(SmallTables::multiByte());
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "a\xA1\xB0\xA1\x8F\xA1\xA1\x8E\xA1\xA1\xA1z"),
              "a\xC3\xA9\xE4\xB8\x80\xE4\xB8\x81\xF0\xA0\x80\x80z");
    EXPECT_EQ(kst_get_subst_count(handle), 0u);
    EXPECT_EQ(toUtf8(handle, "\xB0\xA2z\x8F\xA2\xA1z\x8E\xA1\xA1\xA2z\xB0 z\xFFz"), "?z?z?z?z?z");
    EXPECT_EQ(kst_get_subst_count(handle), 5u);
    EXPECT_EQ(fromUtf8(handle, "\xC3\xA9\xC3\xAA\xC3\xAB\xC3\xAC"), "\xA1\xB0\xA1\x8F\xA1\xA1\x8E\xA1\xA1\xA1");
    EXPECT_EQ(toUcs2(handle, "\x8E\xA1\xA1\xA1"), u"?");
    EXPECT_EQ(kst_get_subst_count(handle), 6u);
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, gb18030TableWithBothKindsOfRanges)
{
    const kst_handle handle = open(SmallTables::gb18030());
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "\x81\x40\x81\x41\x81\x43"), "\xC3\xA9\xE4\xB8\x80\xE4\xB8\x82");
    EXPECT_EQ(toUtf8(handle, "\x90\x30\x81\x30\xE3\x32\x9A\x35"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
    EXPECT_EQ(kst_get_subst_count(handle), 0u);
    EXPECT_EQ(toUtf8(handle, "\x81\x44\x81\x45\x80z\xFFz\x81\x21z"), "???z?z?z") << "unknown kind, no range, no lead";
    EXPECT_EQ(toUtf8(handle, "\x8F\x39\xFE\x39\xE3\x32\x9A\x36"), "??") << "beside the supplementary planes";
    EXPECT_EQ(kst_get_subst_count(handle), 7u);
    EXPECT_EQ(fromUtf8(handle, "\xC3\xA9\xC3\xAA\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
              "\x81\x40\x81\x30\x81\x30\x90\x30\x81\x30\xE3\x32\x9A\x35");
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, aGb18030CharacterThatEndsAsAQuestionMarkIsCounted)
{
    std::string bytes = SmallTables::gb18030();
    const size_t ranges = kMinSize + kGbSubHeaderSize;
    const size_t values = ranges + 2 * load32(reinterpret_cast<const unsigned char*>(&bytes[kMinSize + kGbValuesBase]));
    bytes = SmallTables::with16(bytes, values, 0x3F);                           // 81 40, listed
    bytes = SmallTables::with16(bytes, ranges + 2 * (kGbRangeWords + 3), 0x3E); // 81 42, computed; 81 41 is ">"
    const kst_handle handle = open(bytes);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "\x81\x40\x81\x41\x81\x42\x81\x43?"), "?>?@?");
    EXPECT_EQ(kst_get_subst_count(handle), 2u) << "not the byte of ASCII";
    EXPECT_EQ(toUcs2(handle, "\x81\x40\x81\x41\x81\x42\x81\x43?"), u"?>?@?");
    EXPECT_EQ(kst_get_subst_count(handle), 4u);
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, gb18030BytesBehindTheFirstAreTakenByTheirNumber)
{
    const kst_handle handle = open(SmallTables::gb18030());
    ASSERT_NE(handle, nullptr);
    // 82 and a trail byte below 0x30 has the number of 81 and a trail byte 191 above it.
    EXPECT_EQ(toUtf8(handle, std::string("\x82\x81", 2)), "?");
    std::string aliased = {'\x82', static_cast<char>(0x40 - 191 + 256)};
    EXPECT_EQ(toUtf8(handle, aliased), "?") << "index 192 has no range";
    EXPECT_EQ(toUtf8(handle, "\x81\x3A\x81\x30"), "?") << "3A to 3F make four bytes too";
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, ebcdicDoubleByteTable)
{
    const kst_handle handle = open(SmallTables::doubleByte(Family::EbcdicDbcs));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "\xC1\xA1\x0E\xB0\xA1\x0F\xF1"), "A\xC3\xA9\xE4\xB8\x80"
                                                              "1");
    EXPECT_EQ(toUtf8(handle, "\x0E\x0E\xB0\xA1\x25\x0F\x0F\x40"), "\xE4\xB8\x80\n ") << "a control between the shifts";
    EXPECT_EQ(kst_get_subst_count(handle), 0u);
    EXPECT_EQ(toUtf8(handle, "\x81"), "?") << "not invariant, and not in row 0";
    EXPECT_EQ(toUtf8(handle, "\x0E\xB1\xA1\xFF"), "?\xC2\x9F") << "FF is no lead byte";
    EXPECT_EQ(kst_get_subst_count(handle), 2u);
    EXPECT_EQ(fromUtf8(handle, "\xC3\xA9\xC3\xAA\xC3\xAA\xC3\xA9\xC3\xAB"), "\xA1\x0E\xB0\xA1\xB0\xA1\x0F\xA1\x6F");
    EXPECT_EQ(fromUtf8(handle, "\xC3\xAA\xC3\xAB"), "\x0E\xB0\xA1\x0F\x6F")
        << "without a double-byte substitution the single one stands in state 0";
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, theMarkerSelectsEbcdicSingleByte)
{
    const kst_handle handle = open(SmallTables::with16(SmallTables::singleByte(), kMarkerOffset, 0x1100));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "a\xE9"), "?\xC3\xA9") << "no byte is ASCII";
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, anUnknownFamilyPassesBytesThrough)
{
    const kst_handle handle = open(SmallTables::singleByte(static_cast<Family>(7)));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "a\xE9\xFF"), "a\xE9\xFF");
    EXPECT_EQ(fromUtf8(handle, "a\xC3\xA9"), "a\xC3\xA9");
    EXPECT_EQ(toUcs2(handle, "a\xE9"), u"a\u00E9");
    EXPECT_EQ(fromUcs2(handle, u"a\u00E9\u0100"), "a\xE9?");
    EXPECT_EQ(kst_get_subst_count(handle), 1u);
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, theHeaderTellsTheSubstitutionCharacter)
{
    std::string bytes = SmallTables::singleByte();
    bytes.replace(kSubstitutionOffset, 4,
                  "\x03"
                  "<?>");
    const kst_handle handle = open(bytes);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(fromUtf8(handle, "a\xC3\xAAz"), "a<?>z");
    EXPECT_EQ(toUtf8(handle, "\xEA"), "?") << "towards Unicode it is always the question mark";
    char out[4];
    EXPECT_EQ(kst_from_utf8(handle, "a\xC3\xAAz", -1, out, 4), 2u) << "it is not cut in pieces";
    EXPECT_EQ(kst_get_subst_count(handle), 2u);
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, aSubstitutionLongerThanAnyCodeIsTheDefault)
{
    std::string bytes = SmallTables::singleByte();
    bytes[kSubstitutionOffset] = 5;
    const kst_handle handle = open(bytes);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(fromUtf8(handle, "a\xC3\xAAz"), "a?z");
    EXPECT_EQ(toUtf8(handle, "a\xE9"), "a\xC3\xA9");
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, whatIsNoReverseArrayIsLeftAlone)
{
    const std::string sound = SmallTables::singleByte();
    const auto index = load32(reinterpret_cast<const unsigned char*>(sound.data()) + kReverseIndexOffset);
    const std::string foreign[] = {
        SmallTables::with32(sound, kReverseIndexOffset, 0xFFFFFFFF),
        SmallTables::with32(sound, kReverseIndexOffset, static_cast<uint32_t>(sound.size())),
        SmallTables::with32(sound, kReverseIndexCount, 0x80000000),
        SmallTables::with32(sound, kReverseRowsOffset, 0xFFFFFF00),
        SmallTables::with32(sound, kReverseRowsCount, 0x00800001),
        SmallTables::with16(sound, index, 1), // a row that is not there
    };
    for (const std::string& bytes : foreign) {
        const kst_handle handle = open(bytes);
        ASSERT_NE(handle, nullptr);
        EXPECT_EQ(toUtf8(handle, "a\xE9"), "a\xC3\xA9");
        EXPECT_EQ(fromUtf8(handle, "a\xC3\xA9"), "a?");
        kst_cs_free(handle);
    }
}

TEST_F(CodeTableTest, aMappingAreaBehindTheFileMapsNothing)
{
    const std::string sound = SmallTables::doubleByte();
    for (const uint32_t area : {static_cast<uint32_t>(sound.size()) + 1, 0xFFFFFFFFU}) {
        const kst_handle handle = open(SmallTables::with32(sound, kMappingAreaOffset, area));
        ASSERT_NE(handle, nullptr);
        EXPECT_EQ(toUtf8(handle, "\xE9\xA1\x81\x40"), "???@");
        EXPECT_GT(kst_get_subst_count(handle), 0u);
        kst_cs_free(handle);
    }
}

TEST_F(CodeTableTest, gb18030IndicesThatLeadOutOfTheFileAreUnmapped)
{
    const std::string sound = SmallTables::gb18030();
    const auto subHeader = static_cast<uint32_t>(kMinSize);
    const auto words = static_cast<uint32_t>((sound.size() - kMinSize - kGbSubHeaderSize) / 2);
    const std::string foreign[] = {
        SmallTables::with32(sound, subHeader + kGbRangesBase, 0xFFFFFFFF),
        SmallTables::with32(sound, subHeader + kGbRangesBase, words - 3),
        SmallTables::with32(sound, subHeader + kGbBucketsBase, 0xFFFFFF80),
        SmallTables::with32(sound, subHeader + kGbValuesBase, 0xFFFFFFFF),
    };
    for (const std::string& bytes : foreign) {
        const kst_handle handle = open(bytes);
        ASSERT_NE(handle, nullptr);
        EXPECT_EQ(toUtf8(handle, "az"), "az");
        exercise(handle);
        kst_cs_free(handle);
    }
}

TEST_F(CodeTableTest, gb18030RangesNeedNoEnd)
{
    // One range, 1 to 30000 counted from U+4E00; then 128 buckets that begin with it; then the file ends.
    std::string bytes = SmallTables::gb18030().substr(0, kMinSize + kGbSubHeaderSize);
    bytes = SmallTables::with32(bytes, kMinSize + kGbRangesBase, 0);
    bytes = SmallTables::with32(bytes, kMinSize + kGbBucketsBase, 4);
    bytes = SmallTables::with32(bytes, kMinSize + kGbValuesBase, 0);
    bytes = SmallTables::with32(bytes, kReverseIndexOffset, 0);
    bytes += std::string("\x01\x00\x30\x75\x02\x00\x00\x4E", 8) + std::string(2 * kGbBucketCount, '\0');
    const kst_handle handle = open(bytes);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "\xB0\xA1X"), "\xE7\x85\xB2X");
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, aTableWithoutReverseArraysStillConvertsTowardsUnicode)
{
    for (const std::string& bytes : SmallTables::all()) {
        const kst_handle handle = open(SmallTables::with32(bytes, kReverseIndexOffset, 0));
        ASSERT_NE(handle, nullptr);
        EXPECT_NE(toUtf8(handle, "\xE9\xA1\x81\x40").find('\xC3'), std::string::npos) << kst_get_cs_name(handle);
        const unsigned long before = kst_get_subst_count(handle);
        fromUtf8(handle, "\xC3\xA9");
        EXPECT_EQ(kst_get_subst_count(handle), before + 1);
        kst_cs_free(handle);
    }
}

TEST_F(CodeTableTest, surrogatesInATableAreUnknownCharacters)
{
    const kst_handle handle = open(SmallTables::with16(SmallTables::singleByte(), kRowsOffset + 2 * 0xE9, 0xD800));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "\xE9"), "?");
    EXPECT_EQ(toUcs2(handle, "\xE9"), u"?");
    EXPECT_EQ(kst_get_subst_count(handle), 2u);
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, aTableOfTheUtf8FamilyCopiesUtf8)
{
    const kst_handle handle = open(SmallTables::with16(SmallTables::singleByte(), kFamilyOffset, 6));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(toUtf8(handle, "a\xC3\xA9\xFFz"), "a\xC3\xA9?z");
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, aNameWithoutTerminatorIsCut)
{
    std::string bytes = SmallTables::singleByte();
    bytes.replace(kNameOffset, kNameSize, std::string(kNameSize, 'N'));
    const kst_handle handle = open(bytes);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(kst_get_cs_name(handle), std::string(kNameSize, 'N'));
    kst_cs_free(handle);
}

TEST_F(CodeTableTest, offsetsAndNumbersThatLeadOutOfTheFileAreRefused)
{
    const std::string single = SmallTables::singleByte();
    const std::string dbcs = SmallTables::doubleByte();
    const std::string mbcs = SmallTables::multiByte();
    const std::string gb = SmallTables::gb18030();
    const auto word = [](const std::string& bytes, size_t offset) {
        return load32(reinterpret_cast<const unsigned char*>(bytes.data()) + offset);
    };
    const uint32_t mbcsArea = word(mbcs, kMappingAreaOffset);
    const std::pair<const char*, std::string> hostile[] = {
        {"multi-byte mapping area", SmallTables::with32(mbcs, kMappingAreaOffset, 0xFFFFFFFF)},
        {"multi-byte row", SmallTables::with16(mbcs, kRowsOffset + 2 * 0xB0, 0xFFFE)},
        {"multi-byte row of single bytes", SmallTables::with16(mbcs, kRowsOffset, 0xFFFE)},
        {"multi-byte inner row", SmallTables::with32(mbcs, mbcsArea + 2 * kMbcsRowSize + 4 * 0x21, 0x7FFFFF)},
        {"GB18030 sub-header", SmallTables::with16(gb, kGbSubHeaderOffset, 0xFFFF)},
    };
    for (const auto& [what, bytes] : hostile)
        EXPECT_EQ(open(bytes), nullptr) << what;
    for (const std::string& sound : {single, dbcs, mbcs, gb}) {
        const kst_handle handle = open(sound);
        EXPECT_NE(handle, nullptr);
        kst_cs_free(handle);
    }
}

TEST_F(CodeTableTest, tablesCutAtEveryByteAreRefusedOrConvert)
{
    for (const std::string& bytes : SmallTables::all()) {
        for (size_t size = 0; size < bytes.size(); ++size) {
            const std::string cut = bytes.substr(0, size);
            const auto table = parseTable(std::vector<unsigned char>(cut.begin(), cut.end()));
            EXPECT_TRUE(size >= kMinSize || table == nullptr);
            if (table == nullptr || size % 7 != 0)
                continue;
            const kst_handle handle = open(cut);
            ASSERT_NE(handle, nullptr);
            exercise(handle);
            kst_cs_free(handle);
        }
    }
}

TEST_F(CodeTableTest, damagedTablesAreRefusedOrConvert)
{
    std::mt19937 random(11);
    const std::vector<std::string> tables = SmallTables::all();
    for (int round = 0; round < 2000; ++round) {
        std::string bytes = tables[random() % tables.size()];
        for (unsigned damages = 1 + random() % 8; damages > 0; --damages) {
            // The header decides most; only its fields and the arrays' beginnings are worth hitting.
            const size_t offset = random() % 2 ? random() % 128 : random() % bytes.size();
            bytes[offset] = static_cast<char>(random());
        }
        const kst_handle handle = open(bytes);
        if (handle != nullptr)
            exercise(handle);
        kst_cs_free(handle);
    }
}

TEST_F(CodeTableTest, aFileLargerThanAnyTableIsNotRead)
{
    std::string bytes = SmallTables::singleByte();
    bytes.resize(kMaxSize);
    kst_handle handle = open(bytes);
    EXPECT_NE(handle, nullptr);
    kst_cs_free(handle);
    bytes += '\0';
    EXPECT_EQ(open(bytes), nullptr);
    EXPECT_EQ(kst_cs_new("/dev/zero"), nullptr);
}

TEST_F(CodeTableTest, rangesThatOverlapCostLittle)
{
    std::string bytes = SmallTables::gb18030();
    const size_t array = kMinSize + kGbSubHeaderSize;
    std::string ranges;
    while (ranges.size() < size_t{1} << 20)
        ranges += std::string("\x00\x00\x00\x00\x02\x00\x00\x00", 8); // 0 to 0: passed by every index but 0
    ranges += std::string("\xFF\xFF\xFF\xFF\x00\x00\x00\x00", 8);
    const auto base = static_cast<uint32_t>((bytes.size() - array) / 2);
    bytes = SmallTables::with32(bytes, kMinSize + kGbRangesBase, base) + ranges;
    const auto start = std::chrono::steady_clock::now();
    const kst_handle handle = open(bytes);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << "every range once for each bucket";
    ASSERT_NE(handle, nullptr);
    kst_cs_free(handle);
}

} // namespace
