#include "com/VexTableAttrib.h"

#include <climits>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "com/VexCatalog.h"
#include "com/VexUtil.h"
#include "tests/unit/Capture.h"
#include "tests/unit/com/Utf8AndUtc.h"

namespace
{
using Bytes = std::vector<unsigned char>;

// The whole record, as many bytes as its length field says.
Bytes bytesOf(const VexTableAttrib& attrib)
{
    const unsigned char* record = attrib.getAttribPtr();
    return Bytes(record, record + vexRecordWord(record, 0));
}

void addWord(Bytes& bytes, uint32_t word)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<unsigned char>(word >> shift));
}

Bytes words(std::initializer_list<uint32_t> list)
{
    Bytes bytes;
    for (const uint32_t word : list)
        addWord(bytes, word);
    return bytes;
}

Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes operator+(Bytes left, const std::string& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

using AttribRecord = Utf8AndUtc;
} // namespace

TEST_F(AttribRecord, unsignedCharIsThirteenBytes)
{
    const VexTableAttrib attrib(7, static_cast<unsigned char>(0xA5));
    EXPECT_EQ(bytesOf(attrib), words({13, 7, 1}) + Bytes{0xA5});
}

TEST_F(AttribRecord, unsignedShortIsFourteenBytes)
{
    const VexTableAttrib attrib(8, static_cast<unsigned short>(0x1234));
    EXPECT_EQ(bytesOf(attrib), (words({14, 8, 2}) + Bytes{0x34, 0x12}));
}

TEST_F(AttribRecord, unsignedLongIsSixteenBytesOnBothBuilds)
{
    const VexTableAttrib attrib(9, 0xFEDCBA98UL);
    EXPECT_EQ(bytesOf(attrib), words({16, 9, 3, 0xFEDCBA98}));
}

TEST_F(AttribRecord, unsignedLongLongHasItsLowWordFirst)
{
    const VexTableAttrib attrib(10, 0x0000000100000005ULL);
    EXPECT_EQ(bytesOf(attrib), words({20, 10, 4, 5, 1}));
}

TEST_F(AttribRecord, floatIsSixteenBytesOfIeee)
{
    const VexTableAttrib attrib(11, -1.0F);
    EXPECT_EQ(bytesOf(attrib), words({16, 11, 5, 0xBF800000}));
}

TEST_F(AttribRecord, doubleIsTwentyBytesOfIeee)
{
    const VexTableAttrib attrib(12, 2.5);
    EXPECT_EQ(bytesOf(attrib), words({20, 12, 6, 0, 0x40040000}));
}

TEST_F(AttribRecord, textIsCountedWideCharactersWithTheirTerminator)
{
    const VexTableAttrib attrib(13, "ab");
    EXPECT_EQ(bytesOf(attrib), words({28, 13, 7, 3, 'a', 'b', 0}));
}

TEST_F(AttribRecord, emptyAndNullTextAreOneTerminator)
{
    EXPECT_EQ(bytesOf(VexTableAttrib(14, "")), words({20, 14, 7, 1, 0}));
    EXPECT_EQ(bytesOf(VexTableAttrib(14, static_cast<const char*>(nullptr))), words({20, 14, 7, 1, 0}));
}

TEST_F(AttribRecord, multibyteTextKeepsTheLengthOfItsBytes)
{
    // Five bytes, three characters: the length is the allocation, the count is the text.
    const VexTableAttrib attrib(15, "\xE2\x82\xAC"
                                    "x!");
    EXPECT_EQ(bytesOf(attrib), words({12 + 5 * 4 + 8, 15, 7, 4, 0x20AC, 'x', '!', 0, 0, 0}));
}

TEST_F(AttribRecord, bytesOutsideTheLocaleEndTheText)
{
    EXPECT_EQ(bytesOf(VexTableAttrib(16, "ab\xFF"
                                         "cd")),
              words({12 + 5 * 4 + 8, 16, 7, 3, 'a', 'b', 0, 0, 0, 0}));
    EXPECT_EQ(bytesOf(VexTableAttrib(16, "\xFFz")), words({12 + 2 * 4 + 8, 16, 7, 1, 0, 0, 0}));
    // A character whose last byte is missing.
    EXPECT_EQ(bytesOf(VexTableAttrib(16, "q\xE2\x82")), words({12 + 3 * 4 + 8, 16, 7, 2, 'q', 0, 0, 0}));
}

TEST_F(AttribRecord, plainLocaleRefusesBytesAbove7F)
{
    setlocale(LC_ALL, "C");
    EXPECT_EQ(bytesOf(VexTableAttrib(16, "caf\xC3\xA9")), words({12 + 5 * 4 + 8, 16, 7, 4, 'c', 'a', 'f', 0, 0, 0}));
}

TEST_F(AttribRecord, octetStringIsCountAndBytes)
{
    const unsigned char octets[] = {0x00, 0x7F, 0xFF};
    const VexTableAttrib attrib(17, octets, sizeof octets);
    EXPECT_EQ(bytesOf(attrib), (words({19, 17, 8, 3}) + Bytes{0x00, 0x7F, 0xFF}));
}

TEST_F(AttribRecord, octetStringOfNoBytesIsSixteenBytes)
{
    const unsigned char none = 0;
    EXPECT_EQ(bytesOf(VexTableAttrib(18, &none, 0)), words({16, 18, 8, 0}));
    EXPECT_EQ(bytesOf(VexTableAttrib(18, nullptr, 0)), words({16, 18, 8, 0}));
}

TEST_F(AttribRecord, signedLongIsALocalDateTime)
{
    const VexTableAttrib attrib(19, 1089896709L);
    EXPECT_EQ(bytesOf(attrib), words({38, 19, 9}) + std::string("2004-07-15-13.05.09.000000"));
}

TEST_F(AttribRecord, dateTimeFollowsTheTimeZone)
{
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
    EXPECT_EQ(bytesOf(VexTableAttrib(19, 1089896709L)), words({38, 19, 9}) + std::string("2004-07-15-15.05.09.000000"));
}

TEST_F(AttribRecord, dateTimeBeforeTheEpochHasAllItsDigits)
{
    EXPECT_EQ(bytesOf(VexTableAttrib(20, -2147483647L - 1)),
              words({38, 20, 9}) + std::string("1901-12-13-20.45.52.000000"));
}

TEST_F(AttribRecord, yearAbove9999KeepsItsFourLastDigits)
{
    if (sizeof(long) == 4)
        GTEST_SKIP() << "a 32-bit time ends in 2038";
    EXPECT_EQ(bytesOf(VexTableAttrib(20, static_cast<long>(253402300800LL))),
              words({38, 20, 9}) + std::string("0000-01-01-00.00.00.000000"));
}

TEST_F(AttribRecord, timeWithoutLocalTimeBeginsWithFourZeroBytes)
{
    if (sizeof(long) == 4)
        GTEST_SKIP() << "every 32-bit time has a local time";
    EXPECT_EQ(bytesOf(VexTableAttrib(21, LONG_MAX)), words({38, 21, 9}) + std::string(26, '\0'));
}

TEST_F(AttribRecord, failedConversionLeavesTheRestOfTheDateTimeAlone)
{
    if (sizeof(long) == 4)
        GTEST_SKIP() << "every 32-bit time has a local time";
    char text[] = "xxxxxxxxxxxxxxxxxxxxxxxxxx";
    TimeToVexDateTime(LONG_MIN, text);
    EXPECT_EQ(std::string(text, 26), std::string(4, '\0') + std::string(22, 'x'));
}

TEST_F(AttribRecord, idAndTypeComeFromTheRecord)
{
    const struct {
        VexTableAttrib attrib;
        unsigned long type;
    } cases[] = {
        {{0xFFFFFFF0UL, static_cast<unsigned char>(1)}, VEX_UCHAR},
        {{0xFFFFFFF0UL, static_cast<unsigned short>(1)}, VEX_USHORT},
        {{0xFFFFFFF0UL, 1UL}, VEX_ULONG},
        {{0xFFFFFFF0UL, 1ULL}, VEX_UQUAD},
        {{0xFFFFFFF0UL, 1.0F}, VEX_FLOAT},
        {{0xFFFFFFF0UL, 1.0}, VEX_DOUBLE},
        {{0xFFFFFFF0UL, "1"}, VEX_STRING},
        {{0xFFFFFFF0UL, reinterpret_cast<const unsigned char*>("1"), 1UL}, VEX_OCTETSTRING},
        {{0xFFFFFFF0UL, 1L}, VEX_DATETIME},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.attrib.getId(), 0xFFFFFFF0UL);
        EXPECT_EQ(c.attrib.getType(), c.type);
    }
}

TEST_F(AttribRecord, dumpShowsLengthIdTypeAndValue)
{
    const VexTableAttrib attrib(0x1F, 300UL);
    EXPECT_EQ(capturedOutput([&] { attrib.toString(); }), "\n\t\t---len      : 16"
                                                          "\n\t\t   attribId : x0000001F"
                                                          "\n\t\t   vex_type : 3 (VEX_ULONG)"
                                                          "\n\t\t   value    : 300 (0x0000012C)");
}
