#include "report/catalog/AttributeIds.h"
#include "tests/unit/report/Forms.h"

using namespace report;

namespace
{
struct Read {
    ReadResult result;
    Report report;
    ReadProblem problem;
};

Read read(const std::string& text)
{
    Read read;
    read.result = readReportText(text, read.report, read.problem);
    return read;
}

std::string partition(const std::string& value, const std::string& version = "1", const char* element = "FSType")
{
    return xmlList(
        xmlRow("Partition", version, "\n\t\t\t\t<" + std::string(element) + ">" + value + "</" + element + ">"));
}

std::string onlyText(const Report& report)
{
    return valueText(report.groups.at(0).rows.at(0).values.at(0));
}
} // namespace

TEST(XmlReader, givesTypedValuesWithSourcesAndMarks)
{
    const Report report = reportOf(xmlList(xmlRow(
        "Storage", "2",
        "\n\t\t\t\t<Index>1</Index>\n\t\t\t\t<Model Source=\"/sys/m\">A&amp;B</Model>"
        "\n\t\t\t\t<DeviceName IsKey=\"1\">/dev/sda</DeviceName>\n\t\t\t\t<SizeBytes>18446744073709551615</SizeBytes>"
        "\n\t\t\t\t<Rotational>Yes</Rotational>\n\t\t\t\t<Medium>SSD</Medium>")));
    ASSERT_EQ(report.groups.size(), 1u);
    EXPECT_EQ(report.groups[0].version, 2u);
    const Row& row = report.groups[0].rows.at(0);
    EXPECT_EQ(row.find(STORAGE_INDEX)->content, Content(uint64_t{1}));
    EXPECT_EQ(row.find(STORAGE_MODEL)->content, Content("A&B"));
    EXPECT_EQ(row.find(STORAGE_MODEL)->source, "/sys/m");
    EXPECT_TRUE(row.find(STORAGE_DEVICE_NAME)->markedKey);
    EXPECT_FALSE(row.find(STORAGE_MODEL)->markedKey);
    EXPECT_EQ(row.find(STORAGE_SIZE_BYTES)->content, Content(UINT64_MAX));
    EXPECT_EQ(row.find(STORAGE_ROTATIONAL)->content, Content(uint64_t{1}));
    EXPECT_EQ(row.find("Medium")->attribute, nullptr);
    EXPECT_EQ(row.find("Medium")->content, Content("SSD"));
}

TEST(XmlReader, understandsWhatInvhwWritesRawWhereItStands)
{
    EXPECT_EQ(onlyText(reportOf(partition("UNIX-AT&T System V/386 | SCO UNIX"))), "UNIX-AT&T System V/386 | SCO UNIX");
    EXPECT_EQ(onlyText(reportOf(partition("Minix < 1.4b"))), "Minix < 1.4b");
    EXPECT_EQ(onlyText(reportOf(partition("UNIX-AT&amp;T System V/386 | SCO UNIX"))),
              "UNIX-AT&T System V/386 | SCO UNIX");
    EXPECT_EQ(onlyText(reportOf(partition("a]]>b]]]>", "1", "FSMountPoint"))), "a]]>b]]]>");
    EXPECT_EQ(onlyText(reportOf(partition("x<![CDATA[a&b]]>]]>", "1", "FSMountPoint"))), "xa&b]]>");
}

TEST(XmlReader, refusesTheSameEverywhereElse)
{
    static const std::string texts[] = {
        partition("UNIX-AT&T System V/386 | SCO UNIX", "2"),
        partition("Minix < 1.4b", "2"),
        partition("Minix < 1.4b", "1", "FSMountPoint"),
        partition("UNIX-AT&T System V/386 | SCO UNI"),
        partition("Minix < 1.4"),
        partition("a & b"),
        partition("a]]>b", "2", "FSMountPoint"),
        xmlList(xmlRow("Gadget", "1", "<A>]]></A>")),
        xmlList("]]>"),
        xmlList(xmlRow("Storage", "1", "<FSType>Minix < 1.4b</FSType>")),
    };
    for (const std::string& text : texts)
        EXPECT_EQ(read(text).result, ReadResult::MALFORMED) << text;
}

// What is looked for lies across the end of a block of input at every place in turn.
TEST(XmlReader, understandsRawTextsAcrossBlocks)
{
    constexpr size_t kBlock = 65536;
    const std::string values[] = {"<FSType>Minix < 1.4b</FSType>", "<FSType>UNIX-AT&T System V/386 | SCO UNIX</FSType>",
                                  "<FSMountPoint>a]]>b\r\n&amp;</FSMountPoint>"};
    for (const std::string& value : values) {
        const std::string expected = xmlOf(reportOf(xmlList(xmlRow("Partition", "1", value))));
        const size_t place = xmlList(xmlRow("Partition", "1", value)).find(value);
        for (size_t i = 0; i <= value.size() + 2; ++i) {
            const std::string text = std::string(kBlock - place - i, '\n') + xmlList(xmlRow("Partition", "1", value));
            ASSERT_EQ(xmlOf(reportOf(text)), expected) << value << ' ' << i;
        }
    }
}

TEST(XmlReader, tellsWhereAReportIsCutOffAndKeepsTheRowsBefore)
{
    const std::string row =
        xmlRow("Partition", "1", "\n\t\t\t\t<FSType>Minix < 1.4b</FSType>\n\t\t\t\t<Index IsKey=\"1\">1</Index>");
    const std::string whole = xmlList(row + row + row);
    const std::string_view end = "</serviceData>";
    for (size_t size = 0; size < whole.size(); ++size) {
        const std::string text = whole.substr(0, size);
        size_t rows = 0;
        for (size_t place = text.find(end); place != text.npos; place = text.find(end, place + 1))
            ++rows;
        const Read cut = read(text);
        ASSERT_EQ(rowsOf(cut.report), rows) << size;
        ASSERT_EQ(cut.result, size < 2 ? ReadResult::MALFORMED : ReadResult::CUT_OFF) << size << cut.problem.message;
        ASSERT_EQ(cut.problem.line, 1u + static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) * (size >= 2))
            << size;
    }
    EXPECT_EQ(rowsOf(read(whole).report), 3u);
    EXPECT_EQ(read("<serviceDataList>" + row + "</b><").result, ReadResult::MALFORMED); // before it was cut
}

TEST(XmlReader, tellsLineAndExpectation)
{
    const std::string row = "<serviceData><name>Storage</name>\n<value>\n";
    static const struct {
        std::string text;
        uint64_t line;
        const char* message;
    } cases[] = {
        {"<html/>", 1, "expected <serviceDataList>, found <html>"},
        {"\n<serviceDataList>\n<row/></serviceDataList>", 3, "expected <serviceData>, found <row>"},
        {"<serviceDataList>text</serviceDataList>", 1, "expected <serviceData>, found the text text"},
        {"<serviceDataList><serviceData/></serviceDataList>", 1,
         "expected <name>, found the end of the element around it"},
        {"<serviceDataList><serviceData>\n<name/></serviceData></serviceDataList>", 2, "expected the name of a group"},
        {"<serviceDataList>" + row + "<Storage>", 3, "expected version=\"NUMBER\" of <Storage>, found \"\""},
        {"<serviceDataList>" + row + "<Storage version=\"x\">", 3,
         "expected version=\"NUMBER\" of <Storage>, found \"x\""},
        {"<serviceDataList>" + row + "<Memory version=\"1\">", 3, "expected <Storage>, found <Memory>"},
        {"<serviceDataList>" + row + "<Storage version=\"1\">\n\n<Model><b>x</b></Model>", 5,
         "expected no element, found <b>"},
        {"<serviceDataList>" + row + "<Storage version=\"1\">\n<Model>x</Model>\n<Model>y</Model>", 5,
         "attribute Model comes twice in its row"},
        {"<serviceDataList>" + row + "<Storage version=\"1\">\n<Model IsKey=\"0\">x</Model>", 4,
         "expected no IsKey=\"0\""},
        {"<serviceDataList>" + row + "<Storage version=\"1\">\n<Model>x</Mode>", 4, "not well-formed"},
        {"<serviceDataList>" + row + "<Storage version=\"1\">\n<Model>\x01</Model>", 4, "not well-formed"},
        {"<serviceDataList>" + row + "<Storage version=\"1\">\n<Model>\xFF</Model></Storage></value></serviceData>", 4,
         "not well-formed"},
        {"<serviceDataList>\n&copy;</serviceDataList>", 2, "not well-formed"},
        {"<serviceDataList>\n</serviceDataList>\n<x/>", 3, "not well-formed"},
        {"<!DOCTYPE a [<!ENTITY b \"c\">]>\n<a>&b;</a>", 1, "a document type, which no report has"},
        {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><serviceDataList/>", 1,
         "expected UTF-8, found the encoding ISO-8859-1"},
        {"", 1, "expected a report"},
        {"   \n", 1, "expected a report"},
        {"Processor", 1, "expected a report"},
    };
    for (const auto& c : cases) {
        const Read bad = read(c.text);
        EXPECT_EQ(bad.result, ReadResult::MALFORMED) << c.text;
        EXPECT_EQ(bad.problem.line, c.line) << c.text << bad.problem.message;
        EXPECT_TRUE(bad.problem.message.starts_with(c.message)) << bad.problem.message;
        EXPECT_EQ(bad.problem.message.find('\n'), std::string::npos);
    }
}

// What cannot be decoded is told by the reader alone; the library has nothing to say to the terminal.
TEST(XmlReader, printsNothing)
{
    for (const char* encoding : {"UTF-16", "UTF-16LE", "UCS-4", "ASCII", "ISO-2022-JP", "EBCDIC-US", "HTML", "none"}) {
        testing::internal::CaptureStderr();
        const Read bad = read("<?xml version=\"1.0\" encoding=\"" + std::string(encoding) +
                              "\"?>\n<serviceDataList>\xFF\xD8\x1B$B\x80 x</serviceDataList>");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << encoding;
        EXPECT_EQ(bad.result, ReadResult::MALFORMED) << encoding;
    }
}

TEST(XmlReader, namesGroupRowAndAttributeOfAProblem)
{
    const std::string good = xmlRow("Storage", "2", "<Model>x</Model>");
    const Read bad = read(xmlList(good + xmlRow("Storage", "2", "<Model>x</Model>\n<Index><i/></Index>")));
    EXPECT_EQ(problemText("a.xml", bad.problem), "a.xml:16: Storage row 2, Index: expected no element, found <i>");
    EXPECT_EQ(rowsOf(bad.report), 1u);
}

TEST(XmlReader, tellsTheLineOfEveryRowAndValue)
{
    class Lines : public ReportSink
    {
    public:
        void row(const GroupRows&, Row&, const RowLines& lines) override { all.push_back(lines); }
        std::vector<RowLines> all;
    } sink;
    constexpr size_t kRows = 20'000; // 9 lines each: beyond what 16 bits count
    std::string rows;
    for (size_t i = 0; i < kRows; ++i)
        rows += xmlRow("Lpar", "1", "\n<A/>\n<B>x</B>");
    ReadProblem problem;
    ASSERT_EQ(readReportText(xmlList(rows), sink, problem), ReadResult::WHOLE);
    ASSERT_EQ(sink.all.size(), kRows);
    for (size_t i = 0; i < kRows; ++i) {
        ASSERT_EQ(sink.all[i].row, 4 + 10 * i);
        ASSERT_EQ(sink.all[i].values, (std::vector<uint64_t>{8 + 10 * i, 9 + 10 * i}));
    }
}

TEST(XmlReader, boundsTextsTagsAttributesAndDepth)
{
    const auto value = [](const std::string& text) { return xmlList(xmlRow("Lpar", "1", "<A>" + text + "</A>")); };
    EXPECT_EQ(read(value(std::string(1024 * 1024, 'x'))).result, ReadResult::WHOLE);
    EXPECT_EQ(read(value(std::string(1024 * 1024 + 1, 'x'))).problem.message, "a text of more than 1048576 bytes");
    std::string comments;
    for (int i = 0; i < 20; ++i)
        comments += std::string(60'000, 'x') + "<!-- -->";
    EXPECT_EQ(read(value(comments)).problem.message, "a text of more than 1048576 bytes");
    EXPECT_EQ(read("<a b='" + std::string(70'000, 'x') + "'/>").problem.message, "a tag of more than 65535 bytes");
    EXPECT_EQ(read("<!--" + std::string(70'000, 'x') + "--><a/>").problem.message,
              "a comment of more than 65536 bytes");
    std::string attributes;
    for (int i = 0; i < 4097; ++i)
        attributes += "<A" + std::to_string(i) + "/>";
    EXPECT_EQ(read(xmlList(xmlRow("Lpar", "1", attributes))).problem.message, "more than 4096 attributes in a row");
    std::string large;
    for (int i = 0; i < 17; ++i)
        large += "<A" + std::to_string(i) + ">" + std::string(1024 * 1024, 'x') + "</A" + std::to_string(i) + ">";
    EXPECT_EQ(read(xmlList(xmlRow("Lpar", "1", large))).problem.message, "a row of more than 16777216 bytes");
    std::string deep;
    for (int i = 0; i < 100'000; ++i)
        deep += "<serviceDataList>";
    EXPECT_EQ(read(deep).problem.message, "expected <serviceData>, found <serviceDataList>");
}

TEST(XmlReader, takesTheFormHoweverItIsLaidOut)
{
    EXPECT_EQ(onlyText(reportOf("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- c --><serviceDataList "
                                "xmlns:xsi=\"x\"><?pi?><serviceData><name>Lpar</name><value><Lpar version='1'>"
                                "<LparName IsKey='1' Source='>'>a<!-- c -->b</LparName></Lpar></value></serviceData>"
                                "</serviceDataList>\r\n")),
              "ab");
}
