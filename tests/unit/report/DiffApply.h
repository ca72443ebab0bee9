#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "report/Diff.h"
#include "report/Writer.h"

// Changes as a program that takes them would use them, for tests.

inline std::vector<report::Change> changesOf(const std::string& old, const std::string& now, bool withVolatile)
{
    report::DiffSide sides[2];
    report::ReadProblem problem;
    EXPECT_EQ(readReportText(old, sides[0], problem), report::ReadResult::WHOLE) << problem.message;
    EXPECT_EQ(readReportText(now, sides[1], problem), report::ReadResult::WHOLE) << problem.message;
    std::vector<report::Change> changes;
    EXPECT_TRUE(diff(sides[0], sides[1], withVolatile,
                     [&changes](const report::Change& change) { changes.push_back(change); }));
    return changes;
}

inline std::vector<std::string> sortedTexts(const std::vector<report::Change>& changes)
{
    std::vector<std::string> texts;
    for (const report::Change& change : changes)
        texts.push_back(changeJson(change));
    std::sort(texts.begin(), texts.end());
    return texts;
}

/// The way back: what was added is removed, and a key that has changed is what it became.
inline std::vector<report::Change> inverted(std::vector<report::Change> changes)
{
    for (report::Change& change : changes) {
        if (change.kind != report::Change::CHANGED)
            change.kind = change.kind == report::Change::ADDED ? report::Change::REMOVED : report::Change::ADDED;
        std::swap(change.oldRow, change.newRow);
        for (report::ValueChange& value : change.values) {
            std::swap(value.old, value.now);
            for (report::Value& key : change.key)
                if (key.name() == value.name() && value.old)
                    key = *value.old;
        }
    }
    return changes;
}

inline bool isNamed(const report::Row& row, const std::vector<report::Value>& key)
{
    return std::all_of(key.begin(), key.end(), [&row](const report::Value& value) {
        const report::Value* own = row.find(value.name());
        return own != nullptr && valueText(*own) == valueText(value);
    });
}

/// The row of the old report that a change is about: the one of its number, else the only one that its key names.
inline size_t placeOf(const report::GroupRows& group, const report::Change& change)
{
    size_t place = SIZE_MAX;
    for (size_t i = 0; i < group.rows.size(); ++i) {
        if (change.oldRow != 0 ? i + 1 != change.oldRow : !isNamed(group.rows[i], change.key))
            continue;
        EXPECT_EQ(place, SIZE_MAX) << changeText(change);
        place = i;
    }
    EXPECT_NE(place, SIZE_MAX) << changeText(change);
    return place;
}

inline void apply(report::Row& row, const report::Change& change)
{
    for (const report::ValueChange& value : change.values) {
        std::erase_if(row.values, [&value](const report::Value& own) { return own.name() == value.name(); });
        if (value.now)
            row.values.push_back(*value.now);
    }
}

/// A report after changes: rows are found in the old one, those that are new stand behind the others.
inline report::Report applied(report::Report report, const std::vector<report::Change>& changes)
{
    const report::Report before = report;
    std::set<std::pair<std::string, size_t>> gone;
    for (const report::Change& change : changes) {
        auto group = std::find_if(report.groups.begin(), report.groups.end(),
                                  [&change](const report::GroupRows& rows) { return rows.name() == change.group; });
        if (group == report.groups.end()) {
            const report::Group* known = report::findGroup(change.group);
            group = report.groups.insert(group, {known, known != nullptr ? "" : change.group, 2, {}});
        }
        if (change.kind == report::Change::ADDED) {
            group->rows.emplace_back();
            apply(group->rows.back(), change);
            continue;
        }
        const size_t place = placeOf(*before.find(change.group), change);
        if (change.kind == report::Change::REMOVED)
            gone.emplace(change.group, place);
        else
            apply(group->rows.at(place), change);
    }
    for (auto place = gone.rbegin(); place != gone.rend(); ++place) {
        std::vector<report::Row>& rows = const_cast<report::GroupRows*>(report.find(place->first))->rows;
        rows.erase(rows.begin() + static_cast<ptrdiff_t>(place->second));
    }
    return report;
}

/// All that a diff compares of every row, sorted: rows have no place of their own.
inline std::vector<std::string> comparedRows(const report::Report& report, bool withVolatile)
{
    std::vector<std::string> rows;
    for (const report::GroupRows& group : report.groups)
        for (const report::Row& row : group.rows) {
            std::vector<std::string> values;
            const report::Value* dynamic = row.find("Dynamic");
            const bool isDynamic = dynamic != nullptr && valueText(*dynamic) == "Yes";
            for (const report::Value& value : row.values) {
                const bool isVolatile =
                    value.attribute->isVolatile || (value.attribute->isVolatileIfDynamic && isDynamic);
                if (value.name() != "Index" && (withVolatile || !isVolatile))
                    values.push_back(std::string(value.name()) + "=" + valueText(value));
            }
            std::sort(values.begin(), values.end());
            std::string text(group.name());
            for (const std::string& value : values)
                text += "\n" + value;
            rows.push_back(text);
        }
    std::sort(rows.begin(), rows.end());
    return rows;
}
