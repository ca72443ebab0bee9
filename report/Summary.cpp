#include "report/Summary.h"

#include <algorithm>

#include "report/Writer.h"
#include "report/summary/Sections.h"

namespace report
{
namespace
{
using namespace summary;

constexpr SummarySection (*kSections[])(const Report&) = {
    machineSection, firmwareSection, processorSection, memorySection,
    diskSection,    networkSection,  deviceSection,    unreadSection,
};

void cutLines(SummarySection& section)
{
    if (section.lines.size() <= kMostLines)
        return;
    section.left += section.lines.size() - kMostLines;
    section.lines.resize(kMostLines);
}

bool hasText(const std::vector<SummaryLine>& lines, size_t column)
{
    return std::any_of(lines.begin(), lines.end(), [column](const SummaryLine& line) {
        return !line.cells[column].text.empty() || hasText(line.children, column);
    });
}

void dropColumn(std::vector<SummaryLine>& lines, size_t column)
{
    for (SummaryLine& line : lines) {
        line.cells.erase(line.cells.begin() + static_cast<ptrdiff_t>(column));
        dropColumn(line.children, column);
    }
}

// Of what no line tells there is no column.
void dropEmptyColumns(SummarySection& section)
{
    for (size_t column = section.columns.size(); column-- > 0;) {
        if (hasText(section.lines, column))
            continue;
        dropColumn(section.lines, column);
        section.columns.erase(section.columns.begin() + static_cast<ptrdiff_t>(column));
    }
}

std::string dateOf(const Report& report)
{
    return report.date ? rfc3339(*report.date) : textOf(firstRow(report, GROUP_SCAN_INFO), SCAN_INFO_SCAN_DATE);
}

std::string programOf(const Report& report)
{
    const GroupRows* info = report.find(GROUP_SCAN_INFO);
    if (!report.program.empty() || info == nullptr)
        return report.program;
    return isFirstVersion(*info) ? "invhw" : textOf(firstRow(report, GROUP_SCAN_INFO), SCAN_INFO_BUILD);
}
} // namespace

void SummarySink::header(const Header& header)
{
    kept_.program = header.program;
    kept_.date = header.date;
}

void SummarySink::group(const GroupRows& group, uint64_t)
{
    const std::string name(group.name());
    if (rows_.size() < kMostGroups && rows_.emplace(name, 0).second)
        order_.push_back(name);
    if (group.group != nullptr && isLookedAt(*group.group) && kept_.find(group.group->id) == nullptr)
        kept_.groups.push_back({group.group, {}, group.version, {}});
}

void SummarySink::row(const GroupRows& group, Row& row, const RowLines&)
{
    if (const auto found = rows_.find(group.name()); found != rows_.end())
        ++found->second;
    if (group.group == nullptr || !isLookedAt(*group.group))
        return;
    const auto kept = std::find_if(kept_.groups.begin(), kept_.groups.end(),
                                   [&](const GroupRows& each) { return each.group == group.group; });
    if (kept != kept_.groups.end() && kept->rows.size() < kMostRows)
        kept->rows.push_back(row);
}

Summary SummarySink::summary() const
{
    Summary summary;
    summary.name = machineName(kept_);
    summary.model = modelName(kept_);
    if (summary.name.empty())
        summary.name = summary.model.empty() ? "Machine without a name" : summary.model;
    summary.system = systemName(kept_);
    summary.program = programOf(kept_);
    summary.date = dateOf(kept_);
    for (const auto makeSection : kSections) {
        SummarySection section = makeSection(kept_);
        cutLines(section);
        dropEmptyColumns(section);
        const Group* group = section.group != nullptr ? findGroupByAnyName(section.group) : nullptr;
        if (const auto rows = group != nullptr ? rows_.find(group->element) : rows_.end(); rows != rows_.end())
            section.left += rows->second > kMostRows ? rows->second - kMostRows : 0;
        if (!section.isEmpty())
            summary.sections.push_back(std::move(section));
    }
    for (const std::string& element : order_) {
        const Group* group = findGroup(element);
        summary.groups.emplace_back(group != nullptr ? group->name : element, rows_.find(element)->second);
    }
    return summary;
}
} // namespace report
