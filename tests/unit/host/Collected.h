#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/Scan.h"
#include "report/Writer.h"
#include "tests/unit/host/Tree.h"

/// A row as "Name=BAT0|Status=Full".
inline std::string shown(const report::Row& row)
{
    std::string text;
    for (const report::Value& value : row.values)
        text.append(text.empty() ? "" : "|").append(value.name()).append("=").append(report::valueText(value));
    return text;
}

/// The rows that a scan of the tree has of one group.
inline std::vector<std::string> collected(const Tree& tree, uint32_t group)
{
    host::ScanOptions options;
    options.root = tree.folder();
    options.groups = {group};
    report::Report report;
    std::string reason;
    std::vector<std::string> rows;
    if (!host::scan(options, report, reason))
        return {"no scan: " + reason};
    if (const report::GroupRows* found = report.find(group))
        for (const report::Row& row : found->rows)
            rows.push_back(shown(row));
    return rows;
}

/// What collected() gives, for expectations.
using Rows = std::vector<std::string>;
