#include "com/VexUtil.h"

#include <clocale>
#include <cstring>
#include <cwchar>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "com/VexTableAttrib.h"
#include "tests/unit/Capture.h"
#include "tests/unit/com/Utf8AndUtc.h"

namespace
{
// A record that no constructor makes: a header with a type of our choice and eight value bytes.
std::string recordOfType(uint32_t type)
{
    const uint32_t words[] = {20, 1, type, 0x01020304, 0};
    return std::string(reinterpret_cast<const char*>(words), sizeof words);
}

const unsigned char* asRecord(const std::string& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

std::string valueText(const VexTableAttrib& attrib)
{
    return writtenText([&](FILE* stream) { PrintVexAttribValueToFile(stream, attrib.getAttribPtr()); });
}

// The dump's fourth line alone.
std::string dumpedValue(const VexTableAttrib& attrib)
{
    const std::string dump = capturedOutput([&] { PrintVexAttribValue(attrib.getAttribPtr()); });
    const std::string label = "\n\t\t   value    : ";
    return dump.substr(dump.find(label) + label.size());
}

const unsigned char kOctets[] = {0x00, 0xAB, 0x0F};

using PrintedValue = Utf8AndUtc;

std::wstring escaped(const wchar_t* text)
{
    std::wstring copy(text);
    const std::unique_ptr<wchar_t[]> out(dmtf_escape(copy.data()));
    return out.get();
}
} // namespace

TEST(VexStringSize, countsFourBytesACharacterAndTheCount)
{
    EXPECT_EQ(SizeAsVexString(nullptr), 8UL);
    EXPECT_EQ(SizeAsVexString(""), 8UL);
    EXPECT_EQ(SizeAsVexString("abc"), 3UL * 4 + 8);
    VexString string = {5, {0}};
    EXPECT_EQ(SizeofVexString(&string), 24UL);
}

TEST(StringToVexString, returnsTheBytesUsedAndMovesTheRunningSize)
{
    alignas(4) unsigned char memory[64] = {};
    VexString* string = reinterpret_cast<VexString*>(memory);
    unsigned long size = 100;
    unsigned long offset = 7;
    EXPECT_EQ(StringToVexString("ab", string, 20, &size, &offset), 16UL);
    EXPECT_EQ(offset, 100UL);
    EXPECT_EQ(size, 116UL);
    EXPECT_EQ(string->count, 3U);
    EXPECT_EQ(std::wstring(string->characters), L"ab");

    EXPECT_EQ(StringToVexString("", string, 20, &size, &offset), 8UL);
    EXPECT_EQ(offset, 116UL);
    EXPECT_EQ(size, 124UL);
    EXPECT_EQ(string->count, 1U);
}

TEST(StringToVexString, acceptsOneVariableForSizeAndOffset)
{
    alignas(4) unsigned char memory[64] = {};
    unsigned long scratch = 12;
    EXPECT_EQ(StringToVexString("abc", reinterpret_cast<VexString*>(memory), 20, &scratch, &scratch), 20UL);
    EXPECT_EQ(scratch, 32UL);
}

TEST(StringToVexString, stopsAtTheMaximum)
{
    alignas(4) unsigned char memory[64] = {};
    VexString* string = reinterpret_cast<VexString*>(memory);
    unsigned long scratch = 0;
    StringToVexString("abcdef", string, 4, &scratch, &scratch);
    EXPECT_EQ(std::wstring(string->characters), L"abcd");
    EXPECT_EQ(string->count, 5U);
}

TEST(TypeName, knowsOneToNineOnly)
{
    const char* const names[] = {"VEX_UCHAR",  "VEX_USHORT", "VEX_ULONG",       "VEX_UQUAD",   "VEX_FLOAT",
                                 "VEX_DOUBLE", "VEX_STRING", "VEX_OCTETSTRING", "VEX_DATETIME"};
    for (unsigned long type = 1; type <= 9; ++type)
        EXPECT_STREQ(getVexAttribTypeAsString(type), names[type - 1]);
    EXPECT_STREQ(getVexAttribTypeAsString(0), "Undefined Attrib Type");
    EXPECT_STREQ(getVexAttribTypeAsString(10), "Undefined Attrib Type");
    EXPECT_STREQ(getVexAttribTypeAsString(0xFFFFFFFF), "Undefined Attrib Type");
}

TEST_F(PrintedValue, numbersInTheDumpAreShownTwice)
{
    EXPECT_EQ(dumpedValue({1, static_cast<unsigned char>(10)}), "0x0A");
    EXPECT_EQ(dumpedValue({1, static_cast<unsigned short>(65535)}), "65535 (0xFFFF)");
    EXPECT_EQ(dumpedValue({1, 0x80000000UL}), "2147483648 (0x80000000)");
    EXPECT_EQ(dumpedValue({1, 10UL}), "10 (0x0000000A)");
}

TEST_F(PrintedValue, quadShowsItsLowWordSigned)
{
    EXPECT_EQ(dumpedValue({1, (1ULL << 32) + 5}), "5");
    EXPECT_EQ(dumpedValue({1, 0xFFFFFFFFULL}), "-1");
    EXPECT_EQ(valueText({1, (7ULL << 32) + 0x80000000}), "-2147483648");
}

TEST_F(PrintedValue, dumpOfTheOtherTypes)
{
    EXPECT_EQ(dumpedValue({1, 1.5F}), "1.500000");
    EXPECT_EQ(dumpedValue({1, -2.25}), "-2.250000");
    EXPECT_EQ(dumpedValue({1, "a\"b\tc"}), "a\\\"b\\x09c");
    EXPECT_EQ(dumpedValue({1, kOctets, sizeof kOctets}), "\"00AB0F\"");
    EXPECT_EQ(dumpedValue({1, kOctets, 0UL}), "");
    EXPECT_EQ(dumpedValue({1, 1089896709L}), "2004-07-15-13.05.09.000000");
}

TEST_F(PrintedValue, ofNoRecordIsNothing)
{
    EXPECT_EQ(capturedOutput([] { PrintVexAttribValue(nullptr); }), "");
    EXPECT_EQ(writtenText([](FILE* stream) { PrintVexAttribValueToFile(stream, nullptr); }), "");
}

TEST_F(PrintedValue, dumpOfAnUnknownTypeSaysSo)
{
    EXPECT_EQ(capturedOutput([] { PrintVexAttribValue(asRecord(recordOfType(10))); }),
              "\n\t\t---len      : 20"
              "\n\t\t   attribId : x00000001"
              "\n\t\t   vex_type : 10 (Undefined Attrib Type)"
              "\n\t\t   value    : Unknown attrib value type");
}

TEST_F(PrintedValue, streamGetsTheValueAlone)
{
    EXPECT_EQ(valueText({1, static_cast<unsigned char>(0xFE)}), "0xFE");
    EXPECT_EQ(valueText({1, static_cast<unsigned short>(65535)}), "65535");
    EXPECT_EQ(valueText({1, 0xFFFFFFFEUL}), "4294967294");
    EXPECT_EQ(valueText({1, 0.1F}), "0.100000");
    EXPECT_EQ(valueText({1, 1e6}), "1000000.000000");
    EXPECT_EQ(valueText({1, "back\\slash"}), "back\\\\slash");
    EXPECT_EQ(valueText({1, ""}), "");
    EXPECT_EQ(valueText({1, kOctets, sizeof kOctets}), "\"00AB0F\"");
    EXPECT_EQ(valueText({1, kOctets, 0UL}), "");
    EXPECT_EQ(valueText({1, 0L}), "1970-01-01-00.00.00.000000");
}

TEST_F(PrintedValue, streamGetsNothingForUnknownTypes)
{
    for (const uint32_t type : {0U, 10U, 0xFFFFFFFFU})
        EXPECT_EQ(writtenText([&](FILE* stream) { PrintVexAttribValueToFile(stream, asRecord(recordOfType(type))); }),
                  "");
}

TEST_F(PrintedValue, textIsWrittenInTheLocaleEncoding)
{
    EXPECT_EQ(valueText({1, "\xE2\x82\xAC"}), "\xE2\x82\xAC");
}

TEST_F(PrintedValue, stringOfNoCharactersWritesNothing)
{
    const VexString none = {0, {L'x'}};
    EXPECT_EQ(writtenText([&](FILE* stream) { PrintVexStringToFile(stream, &none); }), "");
}

TEST(OctetString, isQuotedUpperCaseHex)
{
    const auto text = [](unsigned long count) {
        return writtenText([=](FILE* stream) { PrintOctetStringToFile(stream, kOctets, count); });
    };
    EXPECT_EQ(text(0), "\"\"");
    EXPECT_EQ(text(3), "\"00AB0F\"");
}

TEST(TimeBlock, writesTwentySixCharactersWhateverTheyAre)
{
    const std::string block = std::string(4, '\0') + "-07-15-13.05.09.000000";
    EXPECT_EQ(writtenText([&](FILE* stream) { PrintVexTimeBlockToFile(stream, block.data()); }), block);
}

TEST(EnumList, isOnePairALine)
{
    static const vexEnumDef pairs[] = {{2, "two"}, {0xFFFFFFFE, "big"}, {VEX_END, nullptr}};
    static const vexEnumDef empty[] = {{VEX_END, nullptr}};
    const auto text = [](const vexAttribDef* attrib) {
        return writtenText([=](FILE* stream) { PrintVexEnumToFile(stream, attrib); });
    };
    const vexAttribDef listed = {1, "Listed", VEX_ULONG, 0, pairs};
    const vexAttribDef bare = {1, "Bare", VEX_ULONG, 0, nullptr};
    const vexAttribDef none = {1, "None", VEX_ULONG, 0, empty};
    EXPECT_EQ(text(&listed), "\n\t\t2 = \"two\"\n\t\t-2 = \"big\"");
    EXPECT_EQ(text(&bare), "");
    EXPECT_EQ(text(&none), "");
    EXPECT_EQ(text(nullptr), "");
}

TEST(DmtfEscape, emptyTextIsReturnedItself)
{
    wchar_t empty[] = L"";
    EXPECT_EQ(dmtf_escape(empty), empty);
}

TEST(DmtfEscape, escapesBackslashQuoteAndControlCharacters)
{
    EXPECT_EQ(escaped(L"\t"), L"\\x09");
    EXPECT_EQ(escaped(L"\x01\x1F\x20"), L"\\x01\\x1f ");
    EXPECT_EQ(escaped(L"say \"\\\""), L"say \\\"\\\\\\\"");
    EXPECT_EQ(escaped(L"<&>'\x7F\u20AC"), L"<&>'\x7F\u20AC");
}

TEST(DmtfEscape, hasRoomForTextOfControlCharactersOnly)
{
    const std::wstring worst(1000, L'\x02');
    EXPECT_EQ(escaped(worst.c_str()).size(), 4000U);
}
