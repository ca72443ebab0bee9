#include <sys/stat.h>

#include "report/Csv.h"
#include "tests/unit/report/Forms.h"
#include "tests/unit/tool/CommandRun.h"

namespace
{
using ConvertCommand = CommandTest;

const std::string kStorage = "\n\t\t\t\t<Model>=1+1</Model>\n\t\t\t\t<DeviceName IsKey=\"1\">a,\"b\"</DeviceName>";
} // namespace

TEST_F(ConvertCommand, goesFromXmlToJsonAndBack)
{
    const std::string machine = INVHW_SOURCE_DIR "/tests/machines/modern-server/expected.xml";
    const std::string json = file("a.json"), xml = file("a.xml");
    EXPECT_EQ(ran({"convert", "--to", "json", "-o", json.c_str(), machine.c_str()}).status, 0);
    EXPECT_EQ(ran({"convert", "--to", "xml", "-o", xml.c_str(), json.c_str()}).status, 0);
    EXPECT_EQ(fileText(xml), fileText(machine));
    EXPECT_EQ(fileText(json), jsonOf(reportOf(fileText(machine))));
    EXPECT_EQ(ran({"convert", "--to", "xml", json.c_str()}).out, fileText(machine));
    struct stat status;
    ASSERT_EQ(stat(json.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(ConvertCommand, leavesTheOutputAloneWhenItRefuses)
{
    const std::string whole = xmlList(xmlRow("Storage", "2", kStorage)), old = file("old", "old");
    const std::string cut = file("cut.xml", whole.substr(0, whole.size() - 1)), bad = file("bad.xml", "<a/>");
    const size_t before = files();
    for (const char* to : {"xml", "json"}) {
        const CommandRun refused = ran({"convert", "--to", to, "-o", old.c_str(), cut.c_str()});
        EXPECT_EQ(refused.status, 2);
        EXPECT_EQ(refused.error, "invhwctl: convert: " + cut +
                                     ":14: the report is cut off: the file ends before </serviceDataList>\n");
        EXPECT_EQ(ran({"convert", "--to", to, "-o", old.c_str(), bad.c_str()}).error,
                  "invhwctl: convert: " + bad + ":1: expected <serviceDataList>, found <a>\n");
        EXPECT_EQ(ran({"convert", "--to", to, bad.c_str()}).out, "");
        EXPECT_EQ(ran({"convert", "--to", to, "-o", old.c_str(), "/nonexistent"}).error,
                  "invhwctl: convert: /nonexistent: No such file or directory\n");
    }
    const std::string tables = file("tables");
    EXPECT_EQ(ran({"convert", "--to", "csv", "-o", tables.c_str(), cut.c_str()}).status, 2);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(fileText(old), "old");
}

TEST_F(ConvertCommand, takesTheRowsBeforeACutWhenAsked)
{
    const std::string row = xmlRow("Storage", "2", kStorage), whole = xmlList(row);
    const std::string cut = file("cut.xml", whole.substr(0, whole.size() - 1));
    const CommandRun taken = ran({"convert", "--to", "xml", "--partial", cut.c_str()});
    EXPECT_EQ(taken.status, 0);
    EXPECT_EQ(taken.out, whole);
    EXPECT_NE(taken.error.find("cut off"), std::string::npos);
    const std::string bad = file("bad.xml", "\n<serviceDataList>" + row + "<x/></serviceDataList>");
    EXPECT_EQ(ran({"convert", "--to", "xml", "--partial", bad.c_str()}).status, 2);
}

TEST_F(ConvertCommand, refusesWhatJsonCannotSay)
{
    const std::string a = xmlRow("Storage", "2", ""), b = xmlRow("Lpar", "2", "");
    const std::string path = file("a.xml", xmlList(a + b + a));
    const CommandRun refused = ran({"convert", "--to", "json", path.c_str()});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.error, "invhwctl: convert: " + path +
                                 ":20: rows of Storage stand in two places, which the JSON form cannot say\n");
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(ran({"convert", "--to", "xml", path.c_str()}).out, xmlList(a + b + a));
}

TEST_F(ConvertCommand, writesATableAGroup)
{
    const std::string second = "\n\t\t\t\t<DeviceName IsKey=\"1\">two\r\nlines</DeviceName>\n\t\t\t\t<Colour></Colour>";
    const std::string path = file("a.xml", xmlList(xmlRow("Storage", "2", kStorage) + xmlRow("Storage", "2", second) +
                                                   xmlRow("Gadget", "1", "\n<B>-1</B>\n<A>x</A>")));
    const std::string tables = file("tables");
    const CommandRun written = ran({"convert", "--to", "csv", "-o", tables.c_str(), path.c_str()});
    EXPECT_EQ(written.status, 0) << written.error;
    EXPECT_EQ(fileText(tables + "/Storage.csv"), "Model,DeviceName,Colour\r\n=1+1,\"a,\"\"b\"\"\",\r\n"
                                                 ",\"two\r\nlines\",\"\"\r\n");
    EXPECT_EQ(fileText(tables + "/Gadget.csv"), "B,A\r\n-1,x\r\n");
    EXPECT_EQ(ran({"convert", "--to", "csv", "--spreadsheet", "-o", tables.c_str(), path.c_str()}).status, 0);
    EXPECT_EQ(fileText(tables + "/Gadget.csv"), "B,A\r\n'-1,x\r\n");
    EXPECT_EQ(fileText(tables + "/Storage.csv").substr(0, 30), "Model,DeviceName,Colour\r\n'=1+1");
}

TEST_F(ConvertCommand, needsAFormAndOfTablesAFolder)
{
    EXPECT_EQ(ran({"convert", "a.xml"}).error,
              "invhwctl: convert: missing option: --to xml, json, csv, cyclonedx or html\n");
    EXPECT_EQ(ran({"convert", "--to", "csv", "a.xml"}).status, 2);
    EXPECT_EQ(ran({"convert", "--to", "json", "--spreadsheet", "a.xml"}).status, 2);
    const std::string plain = file("plain", "x"), good = file("a.xml", xmlList(""));
    EXPECT_EQ(ran({"convert", "--to", "csv", "-o", plain.c_str(), good.c_str()}).error,
              "invhwctl: convert: " + plain + ": Not a directory\n");
}

TEST(Csv, quotesWhatEndsCellsAndLines)
{
    EXPECT_EQ(report::csvCell("a b", false), "a b");
    EXPECT_EQ(report::csvCell("a,b", false), "\"a,b\"");
    EXPECT_EQ(report::csvCell("a\nb", false), "\"a\nb\"");
    EXPECT_EQ(report::csvCell("a\rb", false), "\"a\rb\"");
    EXPECT_EQ(report::csvCell("\"", false), "\"\"\"\"");
    EXPECT_EQ(report::csvCell("", true), "\"\"");
    for (const char* formula : {"=1", "+1", "-1", "@a"}) {
        EXPECT_EQ(report::csvCell(formula, false), formula);
        EXPECT_EQ(report::csvCell(formula, true), std::string("'") + formula);
    }
}
