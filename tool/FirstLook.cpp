#include "tool/FirstLook.h"

#include <algorithm>

#include "tool/ReadReport.h"

namespace tool
{
void FirstLook::row(const report::GroupRows& group, report::Row& row, const report::RowLines& lines)
{
    hasSources = hasSources || std::any_of(row.values.begin(), row.values.end(),
                                           [](const report::Value& value) { return !value.source.empty(); });
    columns.row(group, row, lines);
    summary.row(group, row, lines);
}

bool readFirst(const CommandDef& command, const Arguments& arguments, report::ReportFile& file, FirstLook& look)
{
    const std::string& path = arguments.operands[0];
    report::ReadProblem problem;
    if (!file.open(path, problem)) {
        fail(command.name, problemText(path, problem));
        return false;
    }
    return acceptsReport(command, arguments, path, file.read(look, problem), problem);
}

bool readElements(const Arguments& arguments, const report::ColumnsSink& columns, std::vector<std::string>& elements,
                  std::string& reason)
{
    std::vector<std::string> names;
    for (const report::Group& group : report::catalog())
        names.push_back(group.name);
    for (const auto& [element, unused] : columns.groups)
        names.push_back(element);
    for (const std::string& name : arguments.values("--group")) {
        const report::Group* group = report::findGroupByAnyName(name);
        const std::string element = group != nullptr ? group->element : name;
        if (group == nullptr && columns.groups.find(element) == columns.groups.end()) {
            reason = "unknown group " + name + suggestion(name, names);
            return false;
        }
        if (std::find(elements.begin(), elements.end(), element) == elements.end())
            elements.push_back(element);
    }
    return true;
}
} // namespace tool
