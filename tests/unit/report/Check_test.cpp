#include "report/Check.h"

#include <filesystem>
#include <map>

#include "tests/unit/report/Forms.h"

using namespace report;

namespace
{
std::vector<Finding> findingsOf(const std::string& text)
{
    std::vector<Finding> findings;
    Checker checker([&findings](const Finding& finding) { findings.push_back(finding); });
    ReadProblem problem;
    const ReadResult result = readReportText(text, checker, problem);
    checker.end(result, problem);
    return findings;
}

std::string namesOf(const std::vector<Finding>& findings)
{
    std::string names;
    for (const Finding& finding : findings)
        names += std::string(names.empty() ? "" : " ") + finding.rule->name + ":" + std::to_string(finding.line);
    return names;
}

// A row of a disk, with one value in place of another.
std::string disk(const std::string& from = "", const std::string& to = "")
{
    std::string values =
        "\n<Index>1</Index>\n<Type>Hard Disk</Type>\n<Model>m</Model>\n<DeviceName IsKey=\"1\">/dev/sda</DeviceName>"
        "\n<SizeBytes>512</SizeBytes>\n<Transport>SATA</Transport>\n<Rotational>Yes</Rotational>";
    if (const size_t place = values.find(from); !from.empty() && place != values.npos)
        values.replace(place, from.size(), to);
    return xmlRow("Storage", "2", values);
}

std::string list(const std::string& rows)
{
    return xmlList(rows);
}

// Reports that break one rule each, and the lines of what is found.
const struct {
    const char* rule;
    std::string text;
    const char* lines;
} kBroken[] = {
    {"well-formed", "\n<serviceDataList></serviceData>", "2"},
    {"well-formed", "not a report", "1"},
    {"cut-off", "\n<serviceDataList>" + disk(), "17"},
    {"code-set", list(disk("m</Model>", "\x01</Model>")), "10"},
    {"code-set", list(disk("m</Model>", "\xFF</Model>")), "10"},
    {"code-set", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><serviceDataList/>", "1"},
    {"code-set", "{\"program\": \"\\u0001\"}", "1"},
    {"code-set", "{\"program\": \"\xFF\"}", "1"},
    {"size", list(disk("m</Model>", std::string(2'000'000, 'm') + "</Model>")), "10"},
    {"group-known", list(xmlRow("Gadget", "1", "\n<A IsKey=\"1\">1</A>")), "4"},
    {"group-version", list(xmlRow("Storage", "3", "\n<DeviceName IsKey=\"1\">/dev/sda</DeviceName>")), "4"},
    {"group-order", list(disk() + xmlRow("Memory", "2", "")), "19"},
    {"group-order", list(xmlRow("Memory", "2", "") + disk() + xmlRow("Memory", "2", "")), "27 27"},
    {"attribute-repeated", list(disk("<SizeBytes>", "<Model>m</Model>\n<SizeBytes>")), "12"},
    {"attribute-known", list(disk("<SizeBytes>", "<Colour>red</Colour>\n<SizeBytes>")), "12"},
    {"attribute-order",
     list(disk("<Index>1</Index>\n<Type>Hard Disk</Type>", "<Type>Hard Disk</Type>\n<Index>1</Index>")), "9"},
    {"key-marked", list(disk(" IsKey=\"1\"")), "11"},
    {"key-marked", list(disk("<Model>", "<Model IsKey=\"1\">")), "10"},
    {"key-missing", list(disk("\n<DeviceName IsKey=\"1\">/dev/sda</DeviceName>")), "4"},
    {"key-unique", list(disk() + disk("<Index>1", "<Index>2")), "19"},
    {"type", list(disk("<Index>1", "<Index>one")), "8"},
    {"type", list(disk(">Yes", ">Y")), "14"},
    {"type", list(disk(">Yes", ">2")), "14"},
    {"range", list(disk("<Index>1", "<Index>4294967296")), "8"},
    {"range", list(disk("<Index>1", "<Index>-1")), "8"},
    {"range", list(disk(">512", ">18446744073709551616")), "12"},
    {"number-form", list(disk(">512", ">0512")), "12"},
    {"number-form", list(xmlRow("Lpar", "2", "\n<NodeCapacity>1,500000</NodeCapacity>")), "8"},
    {"length", list(disk("m</Model>", std::string(2000, 'm') + "</Model>")), "10"},
    {"enumeration", list(disk("Hard Disk", "Soft Disk")), "9"},
    {"word", list(disk("SATA", "Pigeon")), "13"},
    {"date-time", list(xmlRow("ScanInfo", "2", "\n<ScanDate>2004-02-30-13.05.09.0000000</ScanDate>")), "8"},
    {"date-time", list(xmlRow("ScanInfo", "2", "\n<ScanDate>2004-02-03T13:05:09</ScanDate>")), "8"},
};
} // namespace

TEST(Check, findsNothingInAWholeReport)
{
    EXPECT_EQ(namesOf(findingsOf(list(disk()))), "");
    EXPECT_EQ(namesOf(findingsOf(list(""))), "");
    EXPECT_EQ(namesOf(findingsOf(jsonOf(reportOf(list(disk()))))), "");
}

TEST(Check, findsOneRuleBrokenAtItsLine)
{
    for (const auto& c : kBroken) {
        std::string expected;
        std::istringstream lines(c.lines);
        for (std::string line; lines >> line;)
            expected += (expected.empty() ? "" : " ") + std::string(c.rule) + ":" + line;
        EXPECT_EQ(namesOf(findingsOf(c.text)), expected) << c.text.substr(0, 1000);
    }
}

TEST(Check, hasAReportThatBreaksEveryRule)
{
    for (const Rule& rule : checkRules())
        EXPECT_TRUE(std::any_of(std::begin(kBroken), std::end(kBroken), [&rule](const auto& broken) {
            return broken.rule == std::string(rule.name);
        })) << rule.name;
}

TEST(Check, namesPlaceAndExpectation)
{
    const std::vector<Finding> findings = findingsOf(list(disk("<Index>1", "<Index>one")));
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].group, "Storage");
    EXPECT_EQ(findings[0].row, 1u);
    EXPECT_EQ(findings[0].attribute, "Index");
    EXPECT_EQ(findings[0].message, "expected a number, found one");
}

// Version 1 is what invhw writes, which has forms of its own.
TEST(Check, takesTheFormsOfInvhw)
{
    EXPECT_EQ(namesOf(findingsOf(list(xmlRow("Processor", "1",
                                             "\n<ID IsKey=\"1\">x</ID>\n<Index "
                                             "IsKey=\"1\">1</Index>\n<ChipFeatures>-2</ChipFeatures>\n<Manufacturer>" +
                                                 std::string(3000, 'm') + "</Manufacturer>") +
                                      xmlRow("Lpar", "1", "\n<NodeCapacity>1,500000</NodeCapacity>")))),
              "");
}

TEST(Check, findsNothingInWhatInvhwWrote)
{
    size_t reports = 0;
    for (const auto& entry : std::filesystem::directory_iterator(INVHW_SOURCE_DIR "/tests/machines")) {
        if (!std::filesystem::exists(entry.path() / "expected.xml"))
            continue;
        ++reports;
        for (const Finding& finding : findingsOf(fileText(entry.path() / "expected.xml")))
            ADD_FAILURE() << entry.path() << ':' << finding.line << ": " << finding.rule->name << ' ' << finding.group
                          << ' ' << finding.attribute << ": " << finding.message;
    }
    EXPECT_GE(reports, 35u);
}
