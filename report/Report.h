#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "report/Catalog.h"

// A report as plain values: made by the collectors and by the readers of report files, taken by writers and tools.

namespace report
{
/// A civil time of day. Without an offset it is local time of a zone that the report does not tell.
struct DateTime {
    int32_t year = 0;
    uint8_t month = 0, day = 0, hour = 0, minute = 0, second = 0;
    std::optional<int32_t> offsetSeconds; // east of UTC

    bool operator==(const DateTime&) const = default;
};

/// What a value says: a text (UTF-8), a number of a VEX_UCHAR to VEX_UQUAD (of enumerations the code), a number of a
/// VEX_FLOAT or VEX_DOUBLE, a date-time. A text that does not fit its attribute's type stays a text.
using Content = std::variant<std::string, uint64_t, double, DateTime>;

/// One value of a row.
struct Value {
    const Attribute* attribute = nullptr; // null when the catalog does not know it
    std::string element;                  // the element's name when the catalog does not know it
    Content content;
    std::string source;     // the file or call that it came from; empty where the report does not say
    bool markedKey = false; // the report marks it as a key, which of known attributes the catalog says (isKey)

    std::string_view name() const { return attribute != nullptr ? std::string_view(attribute->element) : element; }
};

/// One row of a group, its values in report order.
struct Row {
    std::vector<Value> values;

    /// The value of an attribute's id or of an element's name, or null.
    const Value* find(uint32_t attributeId) const;
    const Value* find(std::string_view element) const;
};

/// All rows of one group.
struct GroupRows {
    const Group* group = nullptr; // null when the catalog does not know it
    std::string element;          // its name when the catalog does not know it
    uint32_t version = 0;
    std::vector<Row> rows;

    std::string_view name() const { return group != nullptr ? std::string_view(group->element) : element; }
};

/// Whether rows are as invhw reports them: of version 1, of a group that it knows.
bool isFirstVersion(const GroupRows& group);

/// Whether a value is one of its row's keys: of the group's version, since version 1 has keys of its own.
bool isKey(const GroupRows& group, const Value& value);

/// A whole report.
struct Report {
    std::string program;          // "invhwctl 5.0.0"; empty where the form does not tell it
    std::optional<DateTime> date; // of the scan
    std::vector<GroupRows> groups;

    const GroupRows* find(uint32_t groupId) const;
    const GroupRows* find(std::string_view element) const;
};
} // namespace report
