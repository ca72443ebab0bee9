#include "tool/HtmlPage.h"

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

#include "report/Html.h"
#include "tool/FirstLook.h"
#include "tool/OutputFile.h"
#include "tool/Spool.h"

namespace tool
{
namespace
{
// The tables of the page, in the report's order, and the rows of each in a temporary file: those of one group may stand
// in several places of a report.
class Tables : public report::ReportSink
{
public:
    Tables(const FirstLook& look, const std::vector<std::string>& elements)
    {
        for (const std::string& element : look.summary.elements()) {
            const auto columns = look.columns.groups.find(element);
            const bool isWanted =
                elements.empty() || std::find(elements.begin(), elements.end(), element) != elements.end();
            if (!isWanted || columns == look.columns.groups.end())
                continue;
            places_.emplace(element, tables.size());
            tables.emplace_back(element, columns->second, look.summary.rows().find(element)->second, tables.size());
            spools.push_back(std::make_unique<Spool>());
        }
    }
    void row(const report::GroupRows& group, report::Row& row, const report::RowLines&) override
    {
        if (const auto place = places_.find(group.name()); place != places_.end())
            tables[place->second].row(row, spools[place->second]->stream());
    }

    std::vector<report::HtmlTable> tables;
    std::vector<std::unique_ptr<Spool>> spools;

private:
    std::map<std::string, size_t, std::less<>> places_;
};

void writeAll(const FirstLook& look, const Tables& all, bool areOpen, std::ostream& out)
{
    const report::Summary summary = look.summary.summary();
    beginPage(summary, all.tables, look.hasSources, out);
    for (size_t i = 0; i < all.tables.size(); ++i) {
        all.tables[i].begin(areOpen, out);
        all.spools[i]->copyTo(out);
        all.tables[i].end(out);
    }
    endPage(summary, out);
}
} // namespace

int writePage(const CommandDef& command, const Arguments& arguments)
{
    report::ReportFile file;
    FirstLook look;
    if (!readFirst(command, arguments, file, look))
        return EXIT_TROUBLE;
    const std::string& path = arguments.operands[0];
    std::vector<std::string> elements;
    std::string reason = look.columns.failure;
    if (!reason.empty())
        return fail(command.name, path + ": " + reason);
    if (!readElements(arguments, look.columns, elements, reason))
        return fail(command.name, reason);
    Tables tables(look, elements);
    report::ReadProblem problem;
    if (file.read(tables, problem) == report::ReadResult::UNREADABLE)
        return fail(command.name, problemText(path, problem));
    const auto write = [&](std::ostream& out) { writeAll(look, tables, !elements.empty(), out); };
    return writeOutput(arguments.value("--output", "-"), write, reason) ? EXIT_OK : fail(command.name, reason);
}
} // namespace tool
