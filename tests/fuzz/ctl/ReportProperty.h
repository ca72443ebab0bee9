#pragma once

#include <cstdlib>
#include <set>
#include <sstream>
#include <string>

#include "report/Check.h"
#include "report/Reader.h"
#include "report/Writer.h"

// What holds of every text that is given to the readers of reports.

inline std::string formOf(const report::Report& report, const char* form)
{
    std::ostringstream out;
    const auto writer = report::makeWriter(form, out, true);
    write(report, *writer);
    return out.str();
}

inline report::Report mustRead(const std::string& text)
{
    report::Report report;
    report::ReadProblem problem;
    if (readReportText(text, report, problem) != report::ReadResult::WHOLE)
        abort();
    return report;
}

/// The JSON form has members: not two groups of one name, which differ in their versions.
inline bool canBeJson(const report::Report& report)
{
    std::set<std::string_view> names;
    for (const report::GroupRows& group : report.groups)
        if (!names.insert(group.name()).second)
            return false;
    return true;
}

inline void checkReport(const std::string& text)
{
    report::Report report;
    report::ReadProblem problem;
    const report::ReadResult result = readReportText(text, report, problem);
    if ((result == report::ReadResult::WHOLE) != problem.message.empty() ||
        problem.message.find('\n') != std::string::npos)
        abort();
    report::Checker checker([](const report::Finding& finding) {
        if (finding.rule == nullptr || finding.message.empty())
            abort();
    });
    report::ReadProblem again;
    checker.end(readReportText(text, checker, again), again);
    const std::string xml = formOf(report, "xml");
    const report::Report ofXml = mustRead(xml);
    if (formOf(ofXml, "xml") != xml)
        abort();
    if (canBeJson(report)) {
        const std::string json = formOf(report, "json");
        if (formOf(mustRead(json), "json") != json)
            abort();
    }
}
