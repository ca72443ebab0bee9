#include <filesystem>

#include "tests/unit/report/Forms.h"

using namespace report;

namespace
{
std::vector<std::string> recordedReports()
{
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(INVHW_SOURCE_DIR "/tests/machines"))
        if (std::filesystem::exists(entry.path() / "expected.xml"))
            paths.push_back(entry.path() / "expected.xml");
    for (const auto& entry : std::filesystem::directory_iterator(INVHW_SOURCE_DIR "/tests/scan/locales"))
        if (entry.path().extension() == ".xml")
            paths.push_back(entry.path());
    return paths;
}

// The two texts of a file system's type that invhw writes raw are escaped in what is written again.
void expectSameBytes(const std::string& xml)
{
    const Report report = reportOf(xml);
    EXPECT_EQ(xmlOf(report, true), xml);
    const std::string json = jsonOf(report, true);
    const Report again = reportOf(json);
    EXPECT_EQ(xmlOf(again, true), xml);
    EXPECT_EQ(jsonOf(again, true), json);
}
} // namespace

TEST(RoundTrip, givesEveryRecordedReportsBytesAgain)
{
    const std::vector<std::string> paths = recordedReports();
    EXPECT_GE(paths.size(), 40u);
    for (const std::string& path : paths) {
        SCOPED_TRACE(path);
        expectSameBytes(fileText(path));
    }
}

TEST(RoundTrip, keepsWhatOneTypeAloneWouldLose)
{
    expectSameBytes(xmlList(xmlRow("Processor", "1",
                                   "\n\t\t\t\t<Index IsKey=\"1\">-1</Index>"
                                   "\n\t\t\t\t<ID IsKey=\"1\">007</ID>"
                                   "\n\t\t\t\t<Family>1</Family>"
                                   "\n\t\t\t\t<MaxClockSpeed>007</MaxClockSpeed>"
                                   "\n\t\t\t\t<ChipFamily></ChipFamily>"
                                   "\n\t\t\t\t<ChipModel> 5</ChipModel>"
                                   "\n\t\t\t\t<ChipStepping>99999999999999999999</ChipStepping>") +
                            xmlRow("Lpar", "1",
                                   "\n\t\t\t\t<NodeCapacity>1,500000</NodeCapacity>"
                                   "\n\t\t\t\t<LparCapacity>-0.000000</LparCapacity>"
                                   "\n\t\t\t\t<SharedPoolCapacity>nan</SharedPoolCapacity>") +
                            xmlRow("ScanInfo", "1", "\n\t\t\t\t<ScanDate>2004-07-15-13.05.09.0000000</ScanDate>") +
                            xmlRow("ScanInfo", "1", "\n\t\t\t\t<ScanDate>2004-02-30-13.05.09.0000000</ScanDate>") +
                            xmlRow("ScanInfo", "1", "\n\t\t\t\t<ScanDate></ScanDate>") + xmlRow("Memory", "1", "")));
}

TEST(RoundTrip, keepsKeyMarksByVersion)
{
    const char* values = "\n\t\t\t\t<Index IsKey=\"1\">1</Index>"
                         "\n\t\t\t\t<FSAccessPoint IsKey=\"1\">/dev/hda1</FSAccessPoint>"
                         "\n\t\t\t\t<FSMountPoint IsKey=\"1\">/</FSMountPoint>";
    expectSameBytes(xmlList(xmlRow("Partition", "1", values)));
    std::string second = values;
    second.replace(second.find(" IsKey"), sizeof " IsKey=\"1\"" - 1, "");
    expectSameBytes(xmlList(xmlRow("Partition", "2", second)));
    expectSameBytes(xmlList(xmlRow("Gadget", "9", "\n\t\t\t\t<A IsKey=\"1\">1</A>\n\t\t\t\t<B>2</B>")));
}

TEST(RoundTrip, keepsTextsOfEveryCharacter)
{
    expectSameBytes(xmlList(
        xmlRow("OperatingSystem", "2",
               "\n\t\t\t\t<CommandLine Source=\"/a&quot;b&amp;&lt;&#9;&#10;&#13;'>\">"
               "a &amp; &lt;b> ]]&gt; ]> \"q\" ' \\ \t\n \r\n\r x\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80</CommandLine>")));
}
