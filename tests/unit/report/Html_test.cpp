#include "report/Html.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "report/html/Parts.h"
#include "tests/unit/report/Forms.h"

using namespace report;

namespace
{
// Rows of one group as a table: what its style is, and what is written.
struct Written {
    std::string style, text;
};

Written written(const std::string& rows, bool isOpen = false)
{
    const Report report = reportOf(xmlList(rows));
    const GroupRows& group = report.groups[0];
    Columns columns;
    for (const Row& row : group.rows)
        for (const Value& value : row.values)
            columns.add(value);
    HtmlTable table(group.name(), columns, group.rows.size(), 1);
    std::ostringstream body, all;
    for (const Row& row : group.rows)
        table.row(row, body);
    table.begin(isOpen, all);
    all << body.str();
    table.end(all);
    return {table.style(), all.str()};
}

std::string between(const std::string& text, const std::string& begin, const std::string& end)
{
    const size_t start = text.find(begin);
    EXPECT_NE(start, std::string::npos) << begin;
    return text.substr(start + begin.size(), text.find(end, start) - start - begin.size());
}

const std::string kDisk = xmlRow("Storage", "2",
                                 "\n<Model Source=\"/sys/&lt;x>\">A&amp;B</Model>\n<DeviceName "
                                 "IsKey=\"1\">/dev/sda</DeviceName>\n<SizeBytes>5</SizeBytes>");
} // namespace

TEST(Html, escapesWhatTextsMayHold)
{
    EXPECT_EQ(htmlText("a <b> & \"c\" 'd'"), "a &lt;b&gt; &amp; &quot;c&quot; &#39;d&#39;");
    EXPECT_EQ(htmlText("</script>\xE2\x80\xA8\xE2\x80\xAE\033"),
              "&lt;/script&gt;&lt;U+2028&gt;&lt;U+202E&gt;&lt;U+001B&gt;");
    EXPECT_EQ(htmlText(""), "");
}

TEST(Html, writesRowsAsTheyCome)
{
    const Written table = written(kDisk + kDisk);
    EXPECT_NE(table.text.find("<details id=\"g-Storage\" data-name=\"Storage\"><summary><h2>Storage</h2>"
                              "<span class=\"count\">2 rows</span></summary>"),
              std::string::npos)
        << table.text;
    EXPECT_NE(table.text.find(
                  "<tr><td>A&amp;B<span class=\"source\">/sys/&lt;x&gt;</span></td><td>/dev/sda</td><td>5</td></tr>\n"
                  "<tr><td>A&amp;B"),
              std::string::npos)
        << table.text;
    EXPECT_NE(table.text.find("data-kind=\"number\""), std::string::npos);
    EXPECT_EQ(table.style, "#g-Storage td:nth-child(3){text-align:right;font-variant-numeric:tabular-nums}\n");
    EXPECT_NE(written(kDisk + kDisk, true).text.find(" open><summary>"), std::string::npos);
}

TEST(Html, laysATableOfOneRowOnItsSide)
{
    const Written table = written(kDisk);
    EXPECT_EQ(table.style, "");
    EXPECT_NE(table.text.find(">Device Name</th><td>/dev/sda</td></tr>\n<tr><th scope=\"row\""), std::string::npos)
        << table.text;
}

// Names that only a hostile report has must end neither a selector nor the style sheet.
TEST(Html, putsNoNameOfAReportIntoTheStyle)
{
    const std::string name = "\"}</style><script>\\";
    Columns columns;
    for (char c = 'a'; c < 'm'; ++c) {
        Value value;
        value.element = c + name;
        columns.add(value);
    }
    const HtmlTable table("G" + name, columns, 9, 7);
    EXPECT_EQ(table.anchor(), "g-7");
    EXPECT_NE(table.style().find("td:nth-child(1)::before{content:\"a\\22 \\7D \\3C \\2F style\\3E "),
              std::string::npos)
        << table.style();
    EXPECT_EQ(table.style().find("<"), std::string::npos);
}

TEST(Html, allowsItsOwnStyleAndScriptByTheirDigests)
{
    Summary summary;
    summary.name = "<host>";
    summary.sections.push_back({.id = "machine", .title = "Machine"});
    summary.sections[0].facts = {{"Used", {"5% of 1 GiB", Tone::BAD, 0.05}}};
    std::ostringstream out;
    beginPage(summary, {}, true, out);
    endPage(summary, out);
    const std::string page = out.str();
    EXPECT_EQ(between(page, "<style>", "</style>"), PAGE_STYLE);
    EXPECT_EQ(between(page, "<script>", "</script>"), PAGE_SCRIPT);
    EXPECT_EQ(PAGE_STYLE.find("</"), std::string_view::npos);
    EXPECT_EQ(PAGE_SCRIPT.find("</script"), std::string_view::npos);
    EXPECT_TRUE(between(page, "Content-Security-Policy\" content=\"", "\"")
                    .starts_with("default-src 'none'; style-src 'sha256-"));
    EXPECT_NE(page.find("<title>&lt;host&gt;</title>"), std::string::npos);
    EXPECT_NE(page.find("<dd class=\"t-bad\"><meter min=\"0\" max=\"100\" low=\"85\" high=\"95\" optimum=\"0\" "
                        "value=\"5\"></meter>5% of 1 GiB</dd>"),
              std::string::npos)
        << page;
}
