#include "report/Terminal.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "report/terminal/Grid.h"
#include "tests/unit/report/Forms.h"

using namespace report;

namespace
{
std::string tableOf(const std::string& rows, const TerminalStyle& style)
{
    const Report report = reportOf(xmlList(rows));
    Columns columns;
    for (const Row& row : report.groups[0].rows)
        for (const Value& value : row.values)
            columns.add(value);
    TerminalTable table(std::string(report.groups[0].name()), columns, style);
    for (const Row& row : report.groups[0].rows)
        table.measure(row);
    std::ostringstream out;
    for (const Row& row : report.groups[0].rows)
        table.print(row, out);
    table.end(out);
    return out.str();
}

std::string diskRow(const std::string& name, const std::string& model, const std::string& size)
{
    return xmlRow("Storage", "2",
                  "\n<Model>" + model + "</Model>\n<DeviceName IsKey=\"1\">" + name + "</DeviceName>\n<SizeBytes>" +
                      size + "</SizeBytes>");
}

const std::string kRows = diskRow("/dev/sda", "A model", "1000") + diskRow("/dev/sdb", "\xC3\xA4\xE6\x97\xA5", "5");

Summary smallSummary()
{
    Summary summary;
    summary.name = "host\033[2J";
    summary.program = "invhwctl 5.0.0";
    summary.date = "2026-11-21T11:35:34Z";
    SummarySection section{.id = "disks", .title = "Disks"};
    section.facts = {{"Fact", {"a value of many words", Tone::WARN}}};
    section.columns = {{"Device"}, {"Size", true}};
    section.lines = {{{{"sda"}, {"1 GiB"}}, {{{{"sda1"}, {"5 MiB"}}, {}}, {{{"sda2\xE2\x80\xAE"}, {""}}, {}}}}};
    section.left = 3;
    section.group = "Storage";
    summary.sections = {section};
    summary.groups = {{"Storage", 4}, {"Lpar", 1}};
    return summary;
}

std::string pageOf(const Summary& summary, const TerminalStyle& style)
{
    std::ostringstream out;
    printSummary(summary, style, out);
    return out.str();
}
} // namespace

TEST(TerminalTable, isPlainWhereNoTerminalIs)
{
    EXPECT_EQ(tableOf(kRows, {}), "Storage: 2 rows\n"
                                  "Model    Device Name  Size Bytes\n"
                                  "A model  /dev/sda           1000\n"
                                  "\xC3\xA4\xE6\x97\xA5      /dev/sdb              5\n"); // a wide character takes two
}

TEST(TerminalTable, breaksHeadingsThenValuesThenBecomesBlocks)
{
    EXPECT_EQ(tableOf(kRows, {.width = 26}), "Storage: 2 rows\n"
                                             "Model    Device     Size\n"
                                             "         Name      Bytes\n"
                                             "A model  /dev/sda   1000\n"
                                             "\xC3\xA4\xE6\x97\xA5      /dev/sdb      5\n");
    const std::string longer = diskRow("/dev/sda", "one two three four five six seven", "1");
    EXPECT_EQ(tableOf(longer, {.width = 38}), "Storage: 1 row\n"
                                              "Model                  Device     Size\n"
                                              "                       Name      Bytes\n"
                                              "one two three four     /dev/sda      1\n"
                                              "five six seven\n");
    EXPECT_EQ(tableOf(longer, {.width = 21}), "Storage: 1 row\n"
                                              "  Model        one two three\n"
                                              "               four five six\n"
                                              "               seven\n"
                                              "  Device Name  /dev/sda\n"
                                              "  Size Bytes   1\n");
}

TEST(TerminalTable, keepsItsColumnsThroughManyRows)
{
    std::string rows;
    for (int i = 0; i < 1201; ++i)
        rows += diskRow("/dev/disk" + std::to_string(i * 1000), "M", "7");
    const std::string table = tableOf(rows, {});
    std::istringstream lines(table);
    std::string line;
    size_t count = 0;
    for (std::getline(lines, line), std::getline(lines, line); std::getline(lines, line); ++count)
        EXPECT_EQ(line.size(), std::string("M      /dev/disk1200000           7").size()) << line;
    EXPECT_EQ(count, 1201U);
    EXPECT_EQ(table.find("Device Name"), table.rfind("Device Name"));
}

TEST(TerminalTable, letsNoValueSpeakToTheTerminal)
{
    const Report report = reportOf(
        R"({"format": "invhw-report", "formatVersion": 1, "program": "p", "versions": {"Storage": 2, "X": 1}, "groups":
{"X": [{"A": "\u009b31m\u202e\u2028\ufeff\\x41\tb", "B": "]]\u200b"}]}})");
    ASSERT_EQ(report.groups.size(), 1U);
    Columns columns;
    for (const Value& value : report.groups[0].rows[0].values)
        columns.add(value);
    for (const size_t width : {0U, 100U, 20U}) {
        TerminalTable table("X\033]0;x\a", columns, {.width = width, .hasColours = false});
        table.measure(report.groups[0].rows[0]);
        std::ostringstream out;
        table.print(report.groups[0].rows[0], out);
        table.end(out);
        EXPECT_EQ(out.str().find('\033'), std::string::npos) << out.str();
        EXPECT_EQ(out.str().find('\a'), std::string::npos);
        EXPECT_EQ(out.str().find("\xC2\x9B"), std::string::npos);
        EXPECT_EQ(out.str().find("\xE2\x80"), std::string::npos);
        EXPECT_EQ(out.str().find('\t'), std::string::npos);
        if (width != 20) {
            EXPECT_NE(out.str().find("<U+009B>31m<U+202E><U+2028><U+FEFF>\\x41<U+0009>b"), std::string::npos)
                << out.str();
        }
    }
}

TEST(TerminalSummary, isOnePage)
{
    EXPECT_EQ(pageOf(smallSummary(), {}), "host<U+001B>[2J\n"
                                          "scanned 2026-11-21T11:35:34Z by invhwctl 5.0.0\n"
                                          "\nDisks\n"
                                          "  Fact  a value of many words\n"
                                          "\n"
                                          "  Device           Size\n"
                                          "  sda             1 GiB\n"
                                          "  \xE2\x94\x9C\xE2\x94\x80"
                                          "sda1          5 MiB\n"
                                          "  \xE2\x94\x94\xE2\x94\x80"
                                          "sda2<U+202E>\n"
                                          "  and 3 more: --group \"Storage\"\n"
                                          "\nRows by group\n"
                                          "  Storage 4, Lpar 1\n");
}

TEST(TerminalSummary, drawsWithAsciiAndColoursAsTheTerminalHasThem)
{
    const std::string ascii = pageOf(smallSummary(), {.isUtf8 = false});
    EXPECT_TRUE(std::all_of(ascii.begin(), ascii.end(), [](unsigned char c) { return c < 0x80; })) << ascii;
    EXPECT_NE(ascii.find("|-sda1"), std::string::npos) << ascii;
    const std::string coloured = pageOf(smallSummary(), {.hasColours = true});
    EXPECT_NE(coloured.find("\033[1mDisks\033[0m"), std::string::npos);
    EXPECT_NE(coloured.find("\033[33ma value of many words"), std::string::npos);
    EXPECT_EQ(coloured.find("\033[2J"), std::string::npos);
    EXPECT_EQ(pageOf(smallSummary(), {}).find('\033'), std::string::npos);
}

TEST(TerminalSummary, staysWithinTheTerminal)
{
    Summary summary = smallSummary();
    summary.sections[0].lines[0].cells[1].text = std::string(300, 'x');
    std::istringstream lines(pageOf(summary, {.width = 60}));
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(displayWidth(line), 60U) << line;
}

TEST(Grid, wrapsAtBlanksThatAreNotTooFarLeft)
{
    using terminal::wrapped;
    EXPECT_EQ(wrapped("one two three", 8), "one two\nthree");
    EXPECT_EQ(wrapped("a bcdefghijk", 6), "a bcde\nfghijk");
    EXPECT_EQ(wrapped("abc", 1), "a\nb\nc");
    EXPECT_EQ(wrapped("abc", 0), "a\nb\nc");
    EXPECT_EQ(wrapped("", 5), "");
    EXPECT_EQ(wrapped("\xE6\x97\xA5\xE6\x9C\xAC", 3), "\xE6\x97\xA5\n\xE6\x9C\xAC");
}

TEST(Grid, fitsByNarrowingTheWidest)
{
    std::vector<size_t> widths{10, 50, 40};
    EXPECT_TRUE(terminal::fit(widths, {14, 14, 14}, 70));
    EXPECT_EQ(widths, (std::vector<size_t>{10, 28, 28}));
    EXPECT_FALSE(terminal::fit(widths, {14, 14, 14}, 30));
    EXPECT_EQ(widths, (std::vector<size_t>{10, 28, 28}));
    std::vector<size_t> none;
    EXPECT_TRUE(terminal::fit(none, {}, 0));
}
