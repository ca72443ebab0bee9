#include "scanner/XmlReport.h"

#include <climits>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "com/Owned.h"
#include "com/VexAttribIds.h"
#include "com/VexUtil.h"
#include "tests/unit/Capture.h"

namespace
{
std::string elementName(const char* text)
{
    const std::unique_ptr<char[]> name(spaceOut(text));
    return name.get();
}

std::string localValue(const VexTableAttrib& attrib)
{
    return capturedOutput([&] { PrintVexAttribValueLocal(attrib.getAttribPtr()); });
}

std::string stringValue(const char* text)
{
    const VexTableAttrib attrib(1, text);
    return writtenText([&](FILE* stream) { PrintVexAttribStringToXMLFile(stream, attrib.getAttribPtr()); });
}

// The report of a table with the given rows, which the table takes over.
std::string reportOf(unsigned long groupId, const std::vector<VexTableRow*>& rows)
{
    VexTable table(groupId, 1);
    for (VexTableRow* row : rows)
        table.addRow(row);
    return capturedOutput([&] { printXML(&table); });
}

VexTableRow* rowWith(unsigned long id, uint32_t value)
{
    auto* row = new VexTableRow;
    row->addULong(id, value);
    return row;
}

class XmlReport : public ::testing::Test
{
protected:
    // The code-set service looks at the environment once, at its first conversion; nothing of the tester's settings
    // may decide.
    static void SetUpTestSuite()
    {
        setenv("KST_CODESET", "UTF-8", 1);
        setenv("LC_ALL", "C.utf8", 1);
    }
    void SetUp() override
    {
        setlocale(LC_ALL, "C.utf8");
        setenv("TZ", "UTC0", 1);
        tzset();
    }
    void TearDown() override { setlocale(LC_ALL, "C"); }
};
using SpaceOut = XmlReport;
using LocalValue = XmlReport;
using StringValue = XmlReport;
using Escape = XmlReport;
using EnumText = XmlReport;
} // namespace

TEST_F(SpaceOut, makesElementNamesOfCatalogNames)
{
    EXPECT_EQ(elementName("Operating System"), "OperatingSystem");
    EXPECT_EQ(elementName("IP Address"), "IPAddress");
    EXPECT_EQ(elementName("MMX(tm) Techonlogy"), "MMXtmTechonlogy");
    EXPECT_EQ(elementName("Fast Floating Point Save/Restore"), "FastFloatingPointSaveRestore");
    EXPECT_EQ(elementName("36-bit Page Size Extension"), "_36-bitPageSizeExtension");
}

TEST_F(SpaceOut, nullAndEmptyTextAreAnEmptyName)
{
    EXPECT_EQ(elementName(nullptr), "");
    EXPECT_EQ(elementName(""), "");
}

TEST_F(SpaceOut, nameMayBeginWithLetterUnderscoreOrColonOnly)
{
    EXPECT_EQ(elementName("-.a"), "a");
    EXPECT_EQ(elementName("_a"), "_a");
    EXPECT_EQ(elementName(":a"), ":a");
    EXPECT_EQ(elementName(" (#)Zz"), "Zz");
    EXPECT_EQ(elementName("-7"), "_7");
    EXPECT_EQ(elementName("7"), "_7");
}

TEST_F(SpaceOut, laterCharactersMayAlsoBeDigitsPointsAndHyphens)
{
    EXPECT_EQ(elementName("a1.2-3:4_5"), "a1.2-3:4_5");
    EXPECT_EQ(elementName("a/b#c d\te\xC3\xA9!"), "abcde");
}

TEST_F(SpaceOut, nothingKeptIsAnEmptyName)
{
    EXPECT_EQ(elementName("()#/ \x80\xFF"), "");
}

TEST_F(SpaceOut, hasRoomForTheUnderscoreBeforeADigit)
{
    EXPECT_EQ(elementName("1234567890"), "_1234567890");
}

TEST(IsKey, looksThroughTheGroupsKeysOnly)
{
    const vexGroupDef* partition = getGroupDefinitionFromId(GROUP_PARTITION);
    EXPECT_EQ(isKey(partition, PARTITION_INDEX), 1);
    EXPECT_EQ(isKey(partition, PARTITION_FS_ACCESS_POINT), 1);
    EXPECT_EQ(isKey(partition, PARTITION_FS_MOUNT_POINT), 1);
    EXPECT_EQ(isKey(partition, PARTITION_TYPE), 0);
    EXPECT_EQ(isKey(getGroupDefinitionFromId(GROUP_MEMORY), MEMORY_TOTAL_PHYSICAL), 0);
}

TEST_F(EnumText, isWrittenForAListedUnsignedLong)
{
    const vexGroupDef* storage = getGroupDefinitionFromId(GROUP_STORAGE);
    const VexTableAttrib listed(STORAGE_TYPE, 17UL);
    const VexTableAttrib unlisted(STORAGE_TYPE, 0x44UL);
    EXPECT_EQ(
        capturedOutput([&] { EXPECT_EQ(PrintEnumActual(stdout, storage, STORAGE_TYPE, listed.getAttribPtr()), 1); }),
        "CD-ROM");
    EXPECT_EQ(
        capturedOutput([&] { EXPECT_EQ(PrintEnumActual(stdout, storage, STORAGE_TYPE, unlisted.getAttribPtr()), 0); }),
        "");
}

TEST_F(EnumText, goesToStandardOutputWhateverStreamIsGiven)
{
    const VexTableAttrib attrib(STORAGE_TYPE, 30UL);
    std::string other;
    EXPECT_EQ(capturedOutput([&] {
                  other = writtenText([&](FILE* stream) {
                      PrintEnumActual(stream, getGroupDefinitionFromId(GROUP_STORAGE), STORAGE_TYPE,
                                      attrib.getAttribPtr());
                  });
              }),
              "Hard Disk");
    EXPECT_EQ(other, "");
}

TEST_F(EnumText, otherTypesAndAbsentDefinitionsHaveNone)
{
    const vexGroupDef* processor = getGroupDefinitionFromId(GROUP_PROCESSOR);
    const VexTableAttrib text(PROCESSOR_INTERFACE, "4");
    const VexTableAttrib shortValue(PROCESSOR_FAMILY, static_cast<unsigned short>(1));
    const VexTableAttrib number(PROCESSOR_FAMILY, 1UL);
    EXPECT_EQ(capturedOutput([&] {
                  EXPECT_EQ(PrintEnumActual(stdout, processor, PROCESSOR_INTERFACE, text.getAttribPtr()), 0);
                  EXPECT_EQ(PrintEnumActual(stdout, processor, PROCESSOR_FAMILY, shortValue.getAttribPtr()), 0);
                  EXPECT_EQ(PrintEnumActual(stdout, processor, 99, number.getAttribPtr()), 0);
                  EXPECT_EQ(PrintEnumActual(stdout, nullptr, PROCESSOR_FAMILY, number.getAttribPtr()), 0);
                  EXPECT_EQ(PrintEnumActual(stdout, processor, PROCESSOR_INDEX, number.getAttribPtr()), 0);
              }),
              "");
}

TEST_F(EnumText, emptyEnumerationHasNone)
{
    static const vexEnumDef empty[] = {{VEX_END, nullptr}};
    static const vexAttribDef attribs[] = {{1, "A", VEX_ULONG, 0, empty}, {VEX_END, nullptr, 0, 0, nullptr}};
    const vexGroupDef group = {1, "G", attribs, nullptr, 0, 1, 0};
    const VexTableAttrib attrib(1, 0xFFFFFFFFUL);
    EXPECT_EQ(PrintEnumActual(stdout, &group, 1, attrib.getAttribPtr()), 0);
}

TEST_F(EnumText, mayBeEmptyAndStillCounts)
{
    const VexTableAttrib attrib(PROCESSOR_INTERFACE, 0UL);
    EXPECT_EQ(capturedOutput([&] {
                  EXPECT_EQ(PrintEnumActual(stdout, getGroupDefinitionFromId(GROUP_PROCESSOR), PROCESSOR_INTERFACE,
                                            attrib.getAttribPtr()),
                            1);
              }),
              "");
}

TEST_F(LocalValue, smallNumbers)
{
    EXPECT_EQ(localValue({1, static_cast<unsigned char>(10)}), "0x0A");
    EXPECT_EQ(localValue({1, static_cast<unsigned char>(255)}), "0xFF");
    EXPECT_EQ(localValue({1, static_cast<unsigned short>(65535)}), "65535");
}

TEST_F(LocalValue, unsignedLongIsShownSigned)
{
    EXPECT_EQ(localValue({1, 0UL}), "0");
    EXPECT_EQ(localValue({1, 0x7FFFFFFFUL}), "2147483647");
    EXPECT_EQ(localValue({1, 0x80000000UL}), "-2147483648");
    EXPECT_EQ(localValue({1, 0xFFFFFFFFUL}), "-1");
}

TEST_F(LocalValue, quadShowsItsLowWordSigned)
{
    EXPECT_EQ(localValue({1, (1ULL << 32) + 5}), "5");
    EXPECT_EQ(localValue({1, 0xFFFFFFFFULL}), "-1");
    EXPECT_EQ(localValue({1, 0xFFFFFFFF00000000ULL}), "0");
}

TEST_F(LocalValue, floatingNumbersHaveSixDecimals)
{
    EXPECT_EQ(localValue({1, -1.0F}), "-1.000000");
    EXPECT_EQ(localValue({1, 0.1F}), "0.100000");
    EXPECT_EQ(localValue({1, 2.5}), "2.500000");
}

TEST_F(LocalValue, octetStringIsEmpty)
{
    const unsigned char octets[] = {1, 2, 3};
    EXPECT_EQ(localValue({1, octets, sizeof octets}), "");
}

TEST_F(LocalValue, dateTimeHasASeventhZero)
{
    EXPECT_EQ(localValue({1, 1089896709L}), "2004-07-15-13.05.09.0000000");
}

TEST_F(LocalValue, dateTimeWithoutLocalTimeIsEmpty)
{
    if (sizeof(long) == 4)
        GTEST_SKIP() << "every 32-bit time has a local time";
    EXPECT_EQ(localValue({1, LONG_MAX}), "");
}

TEST_F(LocalValue, stringIsTheEscapedWideText)
{
    EXPECT_EQ(localValue({1, "a\"b"}), "a\\\"b");
}

TEST_F(LocalValue, unknownTypesAreEmpty)
{
    for (const uint32_t type : {0U, 10U, 0xFFFFFFFFU}) {
        const uint32_t words[] = {20, 1, type, 1, 0};
        EXPECT_EQ(capturedOutput([&] { PrintVexAttribValueLocal(reinterpret_cast<const unsigned char*>(words)); }), "")
            << type;
    }
}

TEST(TimeBlockString, isTheTwentySixCharactersAndAZero)
{
    EXPECT_STREQ(OwnedText(GetTimeBlockString("2004-07-15-13.05.09.000000")).get(), "2004-07-15-13.05.09.0000000");
}

TEST(TimeBlockString, endsAtAZeroByte)
{
    const char block[27] = "\0\0\0\0-07-15-13.05.09.000000";
    EXPECT_STREQ(OwnedText(GetTimeBlockString(block)).get(), "");
}

TEST_F(StringValue, ampersandAndLessThanAreEscapedAndNothingElse)
{
    EXPECT_EQ(stringValue("A&B<C>"), "A&amp;B&lt;C>");
    EXPECT_EQ(stringValue("\"it's\" > &amp;"), "\"it's\" > &amp;amp;");
    EXPECT_EQ(stringValue("&&<<"), "&amp;&amp;&lt;&lt;");
}

TEST_F(StringValue, emptyTextWritesNothing)
{
    EXPECT_EQ(stringValue(""), "");
    EXPECT_EQ(stringValue(nullptr), "");
}

TEST_F(StringValue, multibyteTextArrivesAsUtf8)
{
    EXPECT_EQ(stringValue("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80"), "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80");
}

TEST_F(StringValue, textBeforeTheFirstBadByteIsReported)
{
    EXPECT_EQ(stringValue("good\xFF"
                          "bad"),
              "good");
}

TEST_F(StringValue, textThatTheLocaleCannotExpressIsLeftOut)
{
    const VexTableAttrib attrib(1, "caf\xC3\xA9");
    setlocale(LC_ALL, "C");
    EXPECT_EQ(writtenText([&](FILE* stream) { PrintVexAttribStringToXMLFile(stream, attrib.getAttribPtr()); }), "");
}

TEST_F(StringValue, stringOfNoCharactersWritesNothing)
{
    const uint32_t words[] = {20, 1, VEX_STRING, 0, 'x'};
    EXPECT_EQ(writtenText([&](FILE* stream) {
                  PrintVexAttribStringToXMLFile(stream, reinterpret_cast<const unsigned char*>(words));
              }),
              "");
}

TEST_F(StringValue, textIsCutAt20480Bytes)
{
    EXPECT_EQ(stringValue(std::string(20480, 'x').c_str()), std::string(20480, 'x'));
    EXPECT_EQ(stringValue(std::string(30000, 'x').c_str()), std::string(20480, 'x'));
}

TEST_F(StringValue, theCutKeepsWholeCharacters)
{
    std::string euros;
    for (int i = 0; i < 8000; ++i)
        euros += "\xE2\x82\xAC";
    const std::string text = stringValue(euros.c_str());
    EXPECT_EQ(text.size(), 20480U / 3 * 3);
    EXPECT_EQ(text, euros.substr(0, text.size()));
}

TEST_F(StringValue, longestTextOfAmpersandsIsEscapedWhole)
{
    const std::string text = stringValue(std::string(20480, '&').c_str());
    EXPECT_EQ(text.size(), 20480U * 5);
    EXPECT_EQ(text.substr(text.size() - 10), "&amp;&amp;");
}

TEST_F(Escape, returnsItsOutputBuffer)
{
    char out[64];
    EXPECT_EQ(io_esc_fixn(out, "a<b"), out);
    EXPECT_STREQ(out, "a&lt;b");
    EXPECT_STREQ(io_esc_fixn(out, ""), "");
}

TEST_F(Escape, anInvalidByteCountsAsOneCharacter)
{
    char out[64];
    // The byte itself is the code-set service's to judge; what follows must not be swallowed with it.
    const std::string text = io_esc_fixn(out, "a\xE2&b");
    EXPECT_NE(text.find("&amp;b"), std::string::npos) << text;
}

TEST_F(XmlReport, keyedGroupMarksItsKeys)
{
    auto* row = new VexTableRow;
    row->addULong(PROCESSOR_INDEX, 1);
    row->addString(PROCESSOR_ID, "abc");
    row->addULong(PROCESSOR_FAMILY, 17);
    row->addULong(PROCESSOR_INTERFACE, 8);
    row->addString(PROCESSOR_MMX, "Y");
    row->addString(PROCESSOR_PSE36, "N");
    EXPECT_EQ(reportOf(GROUP_PROCESSOR, {row}), "\n\n\t<serviceData>"
                                                "\n\t\t<name>Processor</name>"
                                                "\n\t\t<value>"
                                                "\n\t\t\t<Processor version=\"1\">"
                                                "\n\t\t\t\t<Index IsKey=\"1\">1</Index>"
                                                "\n\t\t\t\t<ID IsKey=\"1\">abc</ID>"
                                                "\n\t\t\t\t<Family>Pentium III</Family>"
                                                "\n\t\t\t\t<Interface>Slot 1</Interface>"
                                                "\n\t\t\t\t<MMXtmTechonlogy>Y</MMXtmTechonlogy>"
                                                "\n\t\t\t\t<_36-bitPageSizeExtension>N</_36-bitPageSizeExtension>"
                                                "\n\t\t\t</Processor>"
                                                "\n\t\t</value>"
                                                "\n\t</serviceData>");
}

TEST_F(XmlReport, keyedGroupWritesEveryRowWhole)
{
    const auto element = [](const char* index) {
        return std::string("\n\n\t<serviceData>\n\t\t<name>MemoryModules</name>\n\t\t<value>"
                           "\n\t\t\t<MemoryModules version=\"1\">\n\t\t\t\t<Index IsKey=\"1\">") +
               index + "</Index>\n\t\t\t</MemoryModules>\n\t\t</value>\n\t</serviceData>";
    };
    EXPECT_EQ(reportOf(GROUP_MEMORY_MODULES, {rowWith(1, 1), rowWith(1, 2), rowWith(1, 3)}),
              element("1") + element("2") + element("3"));
}

TEST_F(XmlReport, keylessGroupWritesItsFirstRowOnlyAndNoMarks)
{
    EXPECT_EQ(reportOf(GROUP_MEMORY, {rowWith(1, 512), rowWith(1, 2), rowWith(1, 3)}),
              "\n\n\t<serviceData>"
              "\n\t\t<name>Memory</name>"
              "\n\t\t<value>"
              "\n\t\t\t<Memory version=\"1\">"
              "\n\t\t\t\t<TotalPhysical>512</TotalPhysical>"
              "\n\t\t\t</Memory>"
              "\n\t\t</value>"
              "\n\t</serviceData>");
}

TEST_F(XmlReport, emptyTableWritesNothing)
{
    EXPECT_EQ(reportOf(GROUP_MEMORY, {}), "");
    EXPECT_EQ(reportOf(GROUP_PROCESSOR, {}), "");
    EXPECT_EQ(reportOf(17, {}), "");
}

TEST_F(XmlReport, rowWithoutAttributesIsAnEmptyGroupElement)
{
    EXPECT_EQ(reportOf(GROUP_LPAR, {new VexTableRow}), "\n\n\t<serviceData>"
                                                       "\n\t\t<name>Lpar</name>"
                                                       "\n\t\t<value>"
                                                       "\n\t\t\t<Lpar version=\"1\">"
                                                       "\n\t\t\t</Lpar>"
                                                       "\n\t\t</value>"
                                                       "\n\t</serviceData>");
}

TEST_F(XmlReport, unknownGroupHasOneRowOfNamelessElements)
{
    EXPECT_EQ(reportOf(17, {rowWith(1, 5), rowWith(1, 6)}), "\n\n\t<serviceData>"
                                                            "\n\t\t<name>Unknown</name>"
                                                            "\n\t\t<value>"
                                                            "\n\t\t\t<Unknown version=\"1\">"
                                                            "\n\t\t\t\t<>5</>"
                                                            "\n\t\t\t</Unknown>"
                                                            "\n\t\t</value>"
                                                            "\n\t</serviceData>");
}

TEST_F(XmlReport, attributeOutsideTheCatalogIsNameless)
{
    const std::string report = reportOf(GROUP_MEMORY, {rowWith(99, 5)});
    EXPECT_NE(report.find("\n\t\t\t\t<>5</>"), std::string::npos) << report;
}

TEST_F(XmlReport, enumeratedNumberOutsideItsListIsWrittenSigned)
{
    EXPECT_NE(reportOf(GROUP_STORAGE, {rowWith(STORAGE_TYPE, 0x44)}).find("<Type>68</Type>"), std::string::npos);
    EXPECT_NE(reportOf(GROUP_STORAGE, {rowWith(STORAGE_TYPE, 0xFFFFFFFF)}).find("<Type>-1</Type>"), std::string::npos);
    EXPECT_NE(reportOf(GROUP_STORAGE, {rowWith(STORAGE_TYPE, 16)}).find("<Type>Winchester Removable Disk </Type>"),
              std::string::npos);
}

TEST_F(XmlReport, fileSystemTextsAreWrittenRaw)
{
    EXPECT_NE(reportOf(GROUP_PARTITION, {rowWith(PARTITION_FS_TYPE, 0x63)})
                  .find("<FSType>UNIX-AT&T System V/386 | SCO UNIX</FSType>"),
              std::string::npos);
    EXPECT_NE(reportOf(GROUP_PARTITION, {rowWith(PARTITION_FS_TYPE, 0x80)}).find("<FSType>Minix < 1.4b</FSType>"),
              std::string::npos);
}

TEST_F(XmlReport, versionIsTheTables)
{
    VexTable table(GROUP_MEMORY, 0xFFFFFFFF);
    table.addRow(new VexTableRow);
    EXPECT_NE(capturedOutput([&] { printXML(&table); }).find("<Memory version=\"-1\">"), std::string::npos);
}

TEST_F(XmlReport, startsAgainAtTheFirstRow)
{
    VexTable table(GROUP_MEMORY_MODULES, 1);
    table.addRow(rowWith(1, 1));
    table.addRow(rowWith(1, 2));
    table.getNext();
    table.getNext();
    const std::string report = capturedOutput([&] { printXML(&table); });
    EXPECT_NE(report.find(">1</Index>"), std::string::npos);
    EXPECT_NE(report.find(">2</Index>"), std::string::npos);
}
