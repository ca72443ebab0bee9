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

/// A scan of the tree for one group, which has time enough with sanitizers, too.
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

/// The rows that a scan of the tree for one group has of a group: that one, or Scan Status.
inline std::vector<std::string> scanned(const Tree& tree, uint32_t group, uint32_t told)
{
    const report::Report report = scanned(tree, group);
    std::vector<std::string> rows;
    if (const report::GroupRows* found = report.find(told))
        for (const report::Row& row : found->rows)
            rows.push_back(shown(row));
    return rows;
}

/// The rows that a scan of the tree has of one group.
inline std::vector<std::string> collected(const Tree& tree, uint32_t group)
{
    return scanned(tree, group, group);
}

/// How the group was collected: "Group=...|Result=Collected|...|Reason=...".
inline std::string statusOf(const Tree& tree, uint32_t group)
{
    const std::vector<std::string> rows = scanned(tree, group, GROUP_SCAN_STATUS);
    return rows.size() == 1 ? rows.front() : "";
}

/// What collected() gives, for expectations.
using Rows = std::vector<std::string>;
