#pragma once

#include <string>

#include "report/Columns.h"
#include "report/Summary.h"
#include "tool/CommandLine.h"

namespace tool
{
/// What is known of a report when it was read once, for what shows it in a second reading.
class FirstLook : public report::ReportSink
{
public:
    void header(const report::Header& header) override { summary.header(header); }
    void group(const report::GroupRows& group, uint64_t line) override { summary.group(group, line); }
    void row(const report::GroupRows& group, report::Row& row, const report::RowLines& lines) override;

    report::SummarySink summary;
    report::ColumnsSink columns;
    bool hasSources = false; // some value tells where it came from
};

/// Opens the report that the command line names and reads it once. False when the command cannot go on, which has been
/// told.
bool readFirst(const CommandDef& command, const Arguments& arguments, report::ReportFile& file, FirstLook& look);

/// The elements of the groups that --group names, of the catalog or of the report, each once. False, with the reason,
/// when a name is none.
bool readElements(const Arguments& arguments, const report::ColumnsSink& columns, std::vector<std::string>& elements,
                  std::string& reason);
} // namespace tool
