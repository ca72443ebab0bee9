#pragma once

#include <string>

#include "report/Reader.h"
#include "report/Writer.h"
#include "report/redact/Values.h"

// A report whose identifying values are replaced by pseudonyms. It is read twice: what identifies stands in many texts,
// before the row that says so too.
//
//     IdentifyingValues values(key);
//     RedactionGatherer gatherer(values);
//     ... read the report into it ...
//     values.finish();
//     RedactionWriter redacted(values, writer);
//     writer.begin(gatherer.header());
//     ... read the report into it ...
//     writer.end();

namespace report
{
/// The first reading: gathers what identifies, and what a report's beginning must say.
class RedactionGatherer : public ReportSink
{
public:
    explicit RedactionGatherer(IdentifyingValues& values) : values_(values) {}
    void header(const Header& header) override;
    void group(const GroupRows& group, uint64_t line) override;
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

    const Header& header() const { return header_; }
    /// Why the report cannot be redacted; empty when it can.
    const std::string& failure() const { return failure_; }

private:
    IdentifyingValues& values_;
    Header header_;
    bool isNew_ = false; // no row of the group came yet
    std::string failure_;
};

/// The second reading: writes every row redacted.
class RedactionWriter : public ReportSink
{
public:
    RedactionWriter(const IdentifyingValues& values, Writer& writer) : values_(values), writer_(writer) {}
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

private:
    const IdentifyingValues& values_;
    Writer& writer_;
};
} // namespace report
