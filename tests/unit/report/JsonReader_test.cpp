#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

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

const std::string kHead = "{\"format\": \"invhw-report\",\n\"formatVersion\": 1,\n\"program\": \"p\",\n\"versions\": "
                          "{\"Storage\": 2, \"Lpar\": 2, \"ScanInfo\": 2, \"Gadget\": 3},\n";

// The rows stand on the line that follows the fifth.
std::string storage(const std::string& rows)
{
    return kHead + "\"groups\": {\"Storage\": [\n" + rows + "]}}";
}

Value valueOf(const std::string& group, const std::string& member)
{
    const Report report = reportOf(kHead + "\"groups\": {\"" + group + "\": [{" + member + "}]}}");
    if (report.groups.size() != 1 || report.groups[0].rows.size() != 1 || report.groups[0].rows[0].values.size() != 1)
        return {};
    return report.groups[0].rows[0].values[0];
}
} // namespace

TEST(JsonReader, givesTypedValues)
{
    const std::string type = enumText(findGroup(GROUP_STORAGE)->find(STORAGE_TYPE)->enums, 0x1F);
    EXPECT_EQ(valueOf("Storage", "\"Index\": 7").content, Content(uint64_t{7}));
    EXPECT_EQ(valueOf("Storage", "\"Index\": -1").content, Content("-1"));
    EXPECT_EQ(valueOf("Storage", "\"Index\": \"-1\"").content, Content("-1"));
    EXPECT_EQ(valueOf("Storage", "\"Index\": 1.5").content, Content("1.5"));
    EXPECT_EQ(valueOf("Storage", "\"Index\": true").content, Content("true"));
    EXPECT_EQ(valueOf("Storage", "\"SizeBytes\": 18446744073709551615").content, Content(UINT64_MAX));
    EXPECT_EQ(valueOf("Storage", "\"Type\": \"" + type + "\"").content, Content(uint64_t{0x1F}));
    EXPECT_EQ(valueOf("Storage", "\"Type\": \"9999\"").content, Content(uint64_t{9999}));
    EXPECT_EQ(valueOf("Storage", "\"Rotational\": true").content, Content(uint64_t{1}));
    EXPECT_EQ(valueOf("Storage", "\"Rotational\": false").content, Content(uint64_t{0}));
    EXPECT_EQ(valueOf("Storage", "\"Model\": \"\"").content, Content(""));
    EXPECT_EQ(valueOf("Storage", "\"Model\": 5").content, Content("5"));
    EXPECT_EQ(valueOf("Lpar", "\"NodeCapacity\": 4").content, Content(4.0));
    EXPECT_EQ(valueOf("Lpar", "\"NodeCapacity\": -4.5e-1").content, Content(-0.45));
    EXPECT_EQ(valueOf("Lpar", "\"NodeCapacity\": \"1,5\"").content, Content("1,5"));
    EXPECT_EQ(valueOf("ScanInfo", "\"ScanDate\": \"2026-11-21T11:35:34+01:00\"").content,
              Content(DateTime{2026, 11, 21, 11, 35, 34, 3600}));
    EXPECT_EQ(valueOf("ScanInfo", "\"ScanDate\": \"2026-11-21-11.35.34.0000000\"").content,
              Content("2026-11-21-11.35.34.0000000"));
    EXPECT_EQ(valueOf("Gadget", "\"N\": 5").content, Content("5"));
    EXPECT_EQ(valueOf("Gadget", "\"N\": true").content, Content("true"));
}

TEST(JsonReader, givesHeaderSourcesAndKeysWhereverTheyStand)
{
    const Report report = reportOf(
        kHead +
        "\"date\": \"2026-11-21T11:35:34Z\", \"groups\": {\"Gadget\": [{\"$key\": [\"A\"], \"Sources\": "
        "{\"B\": \"/b\"}, \"A\": \"1\", \"B\": \"2\"}], \"Storage\": [{\"DeviceName\": \"/dev/sda\", \"Model\": \"m\", "
        "\"Sources\": {\"Model\": \"/m\"}}], \"Lpar\": []}}");
    EXPECT_EQ(report.program, "p");
    EXPECT_EQ(report.date, (DateTime{2026, 11, 21, 11, 35, 34, 0}));
    ASSERT_EQ(report.groups.size(), 3u);
    EXPECT_EQ(report.groups[0].version, 3u);
    const Row& gadget = report.groups[0].rows.at(0);
    EXPECT_TRUE(gadget.find("A")->markedKey);
    EXPECT_FALSE(gadget.find("B")->markedKey);
    EXPECT_EQ(gadget.find("B")->source, "/b");
    const Row& disk = report.groups[1].rows.at(0);
    EXPECT_TRUE(disk.find("DeviceName")->markedKey);
    EXPECT_EQ(disk.find("Model")->source, "/m");
    EXPECT_TRUE(report.groups[2].rows.empty());
}

// As a tool that sorts members leaves it: the versions stand behind the groups.
TEST(JsonReader, readsMembersInAnyOrderAlsoFromAPipe)
{
    const std::string text =
        "{\"date\": \"2026-11-21T11:35:34Z\", \"groups\": {\"Storage\": [{\"Index\": 1, \"Sources\": "
        "{\"Index\": \"row\"}}]},\"format\": \"invhw-report\", \"formatVersion\": 1, \"program\": "
        "\"p\", \"versions\": {\"Storage\": 1}}";
    const Report report = reportOf(text);
    EXPECT_EQ(report.groups.at(0).version, 1u);
    EXPECT_EQ(report.program, "p");
    EXPECT_EQ(rowsOf(report), 1u);

    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::thread writer([&] {
        EXPECT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(ends[1]);
    });
    Report piped;
    ReadProblem problem;
    EXPECT_EQ(readReport("/proc/self/fd/" + std::to_string(ends[0]), piped, problem), ReadResult::WHOLE)
        << problem.message;
    writer.join();
    close(ends[0]);
    EXPECT_EQ(xmlOf(piped), xmlOf(report));
}

TEST(JsonReader, tellsWhereAReportIsCutOffAndKeepsTheRowsBefore)
{
    const std::string whole = storage("{\"Index\": 1},\n{\"Index\": 2},\n{\"Index\": 3}\n");
    for (size_t size = 1; size < whole.size(); ++size) {
        const std::string text = whole.substr(0, size);
        const Read cut = read(text);
        ASSERT_EQ(cut.result, ReadResult::CUT_OFF) << size << cut.problem.message;
        size_t rows = 0;
        for (const char* row : {"x\": 1}", "x\": 2}", "x\": 3}"})
            rows += text.find(row) != text.npos ? 1U : 0U;
        ASSERT_EQ(rowsOf(cut.report), rows) << size;
        EXPECT_EQ(cut.problem.line, static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + 1) << size;
    }
    EXPECT_EQ(rowsOf(reportOf(whole)), 3u);
}

TEST(JsonReader, tellsLineAndExpectation)
{
    static const struct {
        std::string text;
        uint64_t line;
        const char* message;
    } cases[] = {
        {"{}", 0, "expected the member format"},
        {"{\"format\":\n\"x\"}", 2, "expected the format invhw-report, found x"},
        {"{\"format\": \"invhw-report\",\n\"formatVersion\": 2}", 2, "expected the format version 1, found 2"},
        {"{\"format\": \"invhw-report\", \"formatVersion\": 1, \"versions\": {}}", 0, "expected the member groups"},
        {"{\"groups\": {}}", 0, "expected the member format"},
        {"{\"host\": \"a\"}", 1, "expected a member of the report as host, found the text a"},
        {"{\"versions\": {\"A\": \"1\"}}", 1, "expected a version's number as A, found the text 1"},
        {"{\"versions\": {\"A\": 4294967296}}", 1, "expected a version's number as A, found 4294967296"},
        {"{\"date\": \"yesterday\"}", 1, "expected a date-time of RFC 3339, found yesterday"},
        {"{\"program\": \"a\", \"program\": \"b\"}", 1, "program comes twice"},
        {kHead + "\"groups\": []}", 5, "expected a member of the report as groups, found an array"},
        {kHead + "\"groups\": {\"Memory\": []}}", 5, "expected a version of Memory in \"versions\""},
        {"{\"format\": \"invhw-report\", \"formatVersion\": 1, \"program\": \"\", \"versions\": {\"a b\": 1}, "
         "\"groups\": {\"a b\": []}}",
         1, "expected the name of a group, found a b"},
        {kHead + "\"groups\": {\"Storage\": {}}}", 5, "expected an array of rows as Storage, found an object"},
        {storage("[]"), 6, "expected a row, which is an object, found an array"},
        {storage("{\"Index\": null}"), 6, "expected a text, a number, true or false as Index, found null"},
        {storage("{\"Index\": {}}"), 6, "expected a text, a number, true or false as Index, found an object"},
        {storage("{\"a>b\": \"\"}"), 6, "expected the name of an attribute, found a>b"},
        {storage("{\"Model\": \"a\",\n\"Model\": \"b\"}"), 7, "attribute Model comes twice in its row"},
        {storage("{\"Model\": \"\\u0000\"}"), 6, "a text with a character that XML does not allow"},
        {storage("{\"Model\": \"\\uFFFF\"}"), 6, "a text with a character that XML does not allow"},
        {storage("{\"Model\": \"\\uD800\"}"), 6, "not JSON"},
        {storage("{\"Model\": \"\xFF\"}"), 6, "not JSON"},
        {storage("{\"Model\": 'x'}"), 6, "not JSON"},
        {storage("{\"Model\": \"x\"}") + "\nx", 7, "not JSON"},
        {storage("{\"Sources\": {\"Model\": \"/m\"}}"), 6, "a source of Model, which the row does not have"},
        {storage("{\"Sources\": [\"/m\"]}"), 6, "expected a text, a number, true or false as Sources, found an array"},
        {storage("{\"$key\": [\"Model\"]}"), 6, "expected no $key in a group of the catalog"},
        {kHead + "\"groups\": {\"Gadget\": [{\"A\": \"1\", \"$key\": [\"B\"]}]}}", 5,
         "a key that the row does not have"},
        {kHead + "\"groups\": {\"Gadget\": [{\"A\": \"1\", \"$key\": \"A\"}]}}", 5,
         "expected the name of an attribute, found $key"},
    };
    for (const auto& c : cases) {
        const Read bad = read(c.text);
        EXPECT_EQ(bad.result, ReadResult::MALFORMED) << c.text;
        EXPECT_EQ(bad.problem.line, c.line) << c.text << bad.problem.message;
        EXPECT_TRUE(bad.problem.message.starts_with(c.message)) << bad.problem.message;
        EXPECT_EQ(bad.problem.message.find('\n'), std::string::npos);
    }
}

TEST(JsonReader, boundsTextsRowsAndDepth)
{
    const auto model = [](size_t size) { return storage("{\"Model\": \"" + std::string(size, 'x') + "\"}"); };
    EXPECT_EQ(read(model(1024 * 1024)).result, ReadResult::WHOLE);
    EXPECT_EQ(read(model(1024 * 1024 + 1)).problem.message, "a text of more than 1048576 bytes");
    EXPECT_EQ(read(storage(std::string(8 * 1024 * 1024, ' '))).problem.message, "a text of more than 1048576 bytes");
    std::string many = "{\"A\": \"\"";
    for (int i = 0; i < 4096; ++i)
        many += ",\"A" + std::to_string(i) + "\": \"\"";
    EXPECT_EQ(read(storage(many + "}")).problem.message, "more than 4096 attributes in a row");
    std::string versions = "{\"versions\": {\"A\": 1";
    for (int i = 0; i < 10'000; ++i)
        versions += ",\"A" + std::to_string(i) + "\": 1";
    EXPECT_EQ(read(versions).result, ReadResult::MALFORMED);
    EXPECT_EQ(read("{\"groups\": {\"A\": " + std::string(100'000, '[')).problem.message,
              "values within values deeper than a report has them");
}

TEST(Reader, tellsWhatCannotBeRead)
{
    Report report;
    ReadProblem problem;
    EXPECT_EQ(readReport("/nonexistent/a.xml", report, problem), ReadResult::UNREADABLE);
    EXPECT_EQ(problemText("/nonexistent/a.xml", problem), "/nonexistent/a.xml: No such file or directory");
    EXPECT_EQ(readReport("/proc", report, problem), ReadResult::UNREADABLE);
    EXPECT_EQ(problemText("/proc", problem), "/proc: Is a directory");
}

TEST(Reader, putsRowsOfAGroupTogether)
{
    const std::string a = xmlRow("Storage", "2", ""), b = xmlRow("Lpar", "2", "");
    const Report report = reportOf(xmlList(a + b + a));
    ASSERT_EQ(report.groups.size(), 2u);
    EXPECT_EQ(report.groups[0].rows.size(), 2u);
}
