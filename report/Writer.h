#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report/Report.h"

// How a report becomes text. Writers take a report row by row, so that memory holds one row however long a report is;
// what they write of a Report of values is the same.

namespace report
{
/// What a report says before its first row.
struct Header {
    std::string program; // "invhwctl 5.0.0"
    std::optional<DateTime> date;
    std::vector<std::pair<std::string, uint32_t>> versions; // elements and versions of the groups that follow, in order
};

/// Takes a report in order: begin, the rows of one group after the other, end.
class Writer
{
public:
    virtual ~Writer() = default;
    virtual void begin(const Header& header) = 0;
    /// group's own rows are not looked at.
    virtual void row(const GroupRows& group, const Row& row) = 0;
    virtual void end() = 0;
};

/// The XML form. With sources an element has Source="..." where its value tells one. Nothing is owned.
class XmlWriter : public Writer
{
public:
    XmlWriter(std::ostream& out, bool sources) : out_(out), sources_(sources) {}
    void begin(const Header& header) override;
    void row(const GroupRows& group, const Row& row) override;
    void end() override;

private:
    void addValue(const GroupRows& group, const Value& value);

    std::ostream& out_;
    bool sources_;
    std::string text_; // of the row's values
};

/// The JSON form (RFC 8259), one row a line. With sources a row has the member "Sources".
class JsonWriter : public Writer
{
public:
    JsonWriter(std::ostream& out, bool sources) : out_(out), sources_(sources) {}
    void begin(const Header& header) override;
    void row(const GroupRows& group, const Row& row) override;
    void end() override;

private:
    std::ostream& out_;
    bool sources_;
    std::string group_; // the element of the open group, empty before the first
};

/// A writer of the form that a user names, "xml" or "json"; null for another word.
std::unique_ptr<Writer> makeWriter(std::string_view form, std::ostream& out, bool sources);

/// What a report's first lines say of it: its groups that have rows.
Header headerOf(const Report& report);

/// Hands a whole report to a writer.
void write(const Report& report, Writer& writer);

/// The text of a value as the XML form has it, not escaped: numbers decimal and unsigned, VEX_FLOAT with six digits
/// behind a point, enumerations and yes/no attributes as their texts, date-times as "2026-11-21-11.35.34.0000000".
std::string valueText(const Value& value);

/// A date-time as RFC 3339 has it, without offset where none is known: "2026-11-21T11:35:34+01:00".
std::string rfc3339(const DateTime& dateTime);
} // namespace report
