#pragma once

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "report/Reader.h"
#include "report/Writer.h"

// The forms of reports as texts, for tests.

inline std::string xmlOf(const report::Report& report, bool sources = false)
{
    std::ostringstream out;
    report::XmlWriter writer(out, sources);
    write(report, writer);
    return out.str();
}

inline std::string jsonOf(const report::Report& report, bool sources = false)
{
    std::ostringstream out;
    report::JsonWriter writer(out, sources);
    write(report, writer);
    return out.str();
}

/// The report of a text, which must be whole.
inline report::Report reportOf(const std::string& text)
{
    report::Report report;
    report::ReadProblem problem;
    EXPECT_EQ(readReportText(text, report, problem), report::ReadResult::WHOLE) << problemText("text", problem);
    return report;
}

/// Rows of all groups.
inline size_t rowsOf(const report::Report& report)
{
    size_t rows = 0;
    for (const report::GroupRows& group : report.groups)
        rows += group.rows.size();
    return rows;
}

/// An XML report of these lines of a group's attributes, in one row.
inline std::string xmlRow(const std::string& group, const std::string& version, const std::string& attributes)
{
    return "\n\n\t<serviceData>\n\t\t<name>" + group + "</name>\n\t\t<value>\n\t\t\t<" + group + " version=\"" +
           version + "\">" + attributes + "\n\t\t\t</" + group + ">\n\t\t</value>\n\t</serviceData>";
}

inline std::string xmlList(const std::string& rows)
{
    return "\n<serviceDataList>" + rows + "\n\n</serviceDataList>";
}

inline std::string fileText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    EXPECT_FALSE(text.str().empty()) << path;
    return text.str();
}
