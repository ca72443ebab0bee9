#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "host/Scan.h"
#include "report/Writer.h"
#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Tree.h"

/// A row as "Name=BAT0|Status=Full".
inline std::string shown(const report::Row& row)
{
    std::string text;
    for (const report::Value& value : row.values)
        text.append(text.empty() ? "" : "|").append(value.name()).append("=").append(report::valueText(value));
    return text;
}

/// A scan of the tree for one group.
inline report::Report scanned(const Tree& tree, uint32_t group)
{
    host::ScanOptions options;
    options.root = tree.folder();
    options.groups = {group};
    options.deadlineSeconds = 60;
    report::Report report;
    std::string reason;
    EXPECT_TRUE(host::scan(options, report, reason)) << reason;
    return report;
}

/// The rows that a scan of the tree has of one group.
inline std::vector<std::string> collected(const Tree& tree, uint32_t group)
{
    std::vector<std::string> rows;
    const report::Report report = scanned(tree, group);
    if (const report::GroupRows* found = report.find(group))
        for (const report::Row& row : found->rows)
            rows.push_back(shown(row));
    return rows;
}

/// What Scan Status says of the group: its result, and the reason where there is one ("Collected: a: too long").
inline std::string statusOf(const Tree& tree, uint32_t group)
{
    const report::Report report = scanned(tree, group);
    const report::Row& row = report.find(GROUP_SCAN_STATUS)->rows.at(0);
    const report::Value* const reason = row.find(SCAN_STATUS_REASON);
    return report::valueText(*row.find(SCAN_STATUS_RESULT)) + (reason ? ": " + report::valueText(*reason) : "");
}

/// What collected() gives, for expectations.
using Rows = std::vector<std::string>;
