// invhwctl show: a report for people.

#include <algorithm>
#include <functional>

#include "report/Columns.h"
#include "report/Terminal.h"
#include "tool/Commands.h"
#include "tool/FirstLook.h"
#include "tool/HtmlPage.h"
#include "tool/OutputFile.h"
#include "tool/ReadReport.h"
#include "tool/Style.h"

namespace tool
{
namespace
{
constexpr OptionDef kShowOptions[] = {
    {"--group", "-g", "NAME",
     "the whole table of this group, by its name (\"IP Address\") or its element's (IPAddress), in place of the "
     "summary; "
     "repeatable",
     true},
    {"--html", nullptr, nullptr,
     "one HTML page with the summary and a table of every group, or of those that --group names: sortable, filterable, "
     "printable, without anything from elsewhere"},
    {"--output", "-o", "FILE", "write to FILE, whole or not at all, mode 0600; \"-\", the default, is standard output"},
    PARTIAL_OPTION,
};
constexpr ExampleDef kShowExamples[] = {
    {"invhwctl show report.xml", "the machine on one page: what it is, its disks, its network, what was refused"},
    {"invhwctl scan | invhwctl show -", "the same of this machine, now"},
    {"invhwctl show --group Storage --group \"Network Adapter\" report.xml", "two groups as tables, every attribute"},
    {"invhwctl show --html -o host17.html report.xml", "the same for a browser, in one file"},
    {"invhwctl show --group \"Software Packages\" report.json | less -S", "a wide table, line by line"},
};

report::TerminalStyle styleOf(const Arguments& arguments)
{
    return outputStyle(arguments.value("--output", "-") == "-");
}

// Hands the rows of one group to a function.
class RowsOf : public report::ReportSink
{
public:
    RowsOf(std::string element, std::function<void(const report::Row&)> take)
        : element_(std::move(element)), take_(std::move(take))
    {
    }
    void row(const report::GroupRows& group, report::Row& row, const report::RowLines&) override
    {
        if (group.name() == element_)
            take_(row);
    }

private:
    std::string element_;
    std::function<void(const report::Row&)> take_;
};

// Reads the report two more times: a table's columns are as wide as its widest values.
bool printTable(const std::string& element, const report::ColumnsSink& columns, report::ReportFile& file,
                const report::TerminalStyle& style, std::ostream& out)
{
    static const report::Columns kNone;
    const auto found = columns.groups.find(element);
    const report::Group* group = report::findGroup(element);
    report::TerminalTable table(group != nullptr ? group->name : element,
                                found != columns.groups.end() ? found->second : kNone, style);
    RowsOf measured(element, [&](const report::Row& row) { table.measure(row); });
    RowsOf printed(element, [&](const report::Row& row) { table.print(row, out); });
    report::ReadProblem problem;
    if (found != columns.groups.end() && (file.read(measured, problem) == report::ReadResult::UNREADABLE ||
                                          file.read(printed, problem) == report::ReadResult::UNREADABLE))
        return false;
    table.end(out);
    return true;
}

int showTables(const Arguments& arguments, const FirstLook& look, report::ReportFile& file)
{
    std::vector<std::string> elements;
    std::string reason;
    if (!look.columns.failure.empty())
        return fail(SHOW_COMMAND.name, arguments.operands[0] + ": " + look.columns.failure);
    if (!readElements(arguments, look.columns, elements, reason))
        return fail(SHOW_COMMAND.name, reason);
    const auto write = [&](std::ostream& out) {
        for (const std::string& element : elements) {
            out << (&element == &elements.front() ? "" : "\n");
            if (!printTable(element, look.columns, file, styleOf(arguments), out))
                out.setstate(std::ios::badbit);
        }
    };
    return writeOutput(arguments.value("--output", "-"), write, reason) ? EXIT_OK : fail(SHOW_COMMAND.name, reason);
}

int showSummary(const Arguments& arguments, const FirstLook& look)
{
    std::string reason;
    const auto write = [&](std::ostream& out) { printSummary(look.summary.summary(), styleOf(arguments), out); };
    return writeOutput(arguments.value("--output", "-"), write, reason) ? EXIT_OK : fail(SHOW_COMMAND.name, reason);
}

int runShow(const Arguments& arguments)
{
    if (arguments.has("--html"))
        return writePage(SHOW_COMMAND, arguments);
    report::ReportFile file;
    FirstLook look;
    if (!readFirst(SHOW_COMMAND, arguments, file, look))
        return EXIT_TROUBLE;
    return arguments.has("--group") ? showTables(arguments, look, file) : showSummary(arguments, look);
}
} // namespace

constexpr CommandDef SHOW_COMMAND = {
    .name = "show",
    .summary = "a report for people",
    .description =
        "Shows a report of invhw or of invhwctl scan, in either form (\"-\" is standard input): on one page what the "
        "machine is, its firmware, processors, memory and modules, disks with what lies on them and where it is "
        "mounted, network, and what the scan was refused; or whole tables; or all of it as an HTML page. On a terminal "
        "lines are as wide as it is, "
        "and what is out of order has a colour, unless NO_COLOR is set; what is piped has neither.",
    .operands = "FILE",
    .leastOperands = 1,
    .mostOperands = 1,
    .options = kShowOptions,
    .examples = kShowExamples,
    .run = runShow,
};
} // namespace tool
