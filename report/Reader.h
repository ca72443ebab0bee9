#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "report/Report.h"
#include "report/Writer.h"

// How report files become values: the XML form (of invhw and of invhwctl) and the JSON form, whichever a file holds.
//
// A tool that needs one row at a time takes them as they come, so that memory holds one row however long a report is:
//
//     class Counter : public ReportSink
//     {
//     public:
//         void row(const GroupRows&, Row&, const RowLines&) override { ++rows; }
//         size_t rows = 0;
//     };
//
//     Counter counter;
//     ReadProblem problem;
//     if (readReport(path, counter, problem) != ReadResult::WHOLE)
//         complain(problemText(path, problem)); // "a.xml:12: the report is cut off ..."
//
// One that needs all rows at once has them filled into a Report; of a report that was cut off it then holds the rows
// before the cut, which a tool takes only when it was asked to (--partial).
//
// Values are exact: writing what was read gives the same bytes. A text stays a text where its type would write another
// one ("-1" of a VEX_ULONG, "1,5"); meaningOf() in report/Content.h says what such a text means.

namespace report
{
/// Lines (from 1) on which a row and its values begin.
struct RowLines {
    uint64_t row = 0;
    std::vector<uint64_t> values; // one for each of the row's
};

/// Takes a report in order.
class ReportSink
{
public:
    virtual ~ReportSink() = default;
    /// Once, before the first group, what a report says of itself: of the XML form nothing.
    virtual void header(const Header&) {}
    /// The rows that follow are of this group (its own rows are empty): before the first row, and whenever the group or
    /// its version is another one than before. Of the JSON form, groups without rows too.
    virtual void group(const GroupRows&, uint64_t /*line*/) {}
    /// A whole row. It may be moved from.
    virtual void row(const GroupRows& group, Row& row, const RowLines& lines) = 0;
};

enum class ReadResult {
    WHOLE,
    CUT_OFF,   // the file ends within the report; what came before was given
    MALFORMED, // what came before the problem was given
    UNREADABLE // the file cannot be opened or read
};

/// What a problem is about.
enum class ProblemKind { FORM, CODE_SET, SIZE, REPEATED };

/// Why a report could not be read whole.
struct ReadProblem {
    ProblemKind kind = ProblemKind::FORM;
    uint64_t line = 0; // 0 where the whole file is meant
    std::string group; // element and row (from 1) that were being read, empty and 0 outside
    uint64_t row = 0;
    std::string attribute;
    std::string message; // one line of valid UTF-8: what was expected
};

/// Reads a report from a file, or from standard input ("-").
ReadResult readReport(const std::string& path, ReportSink& sink, ReadProblem& problem);
ReadResult readReport(const std::string& path, Report& report, ReadProblem& problem);

class Input;

/// A report file that is read more than once.
class ReportFile
{
public:
    ReportFile();
    ~ReportFile();
    /// What is no file, as standard input may be, is copied into a temporary one. False when it cannot be opened.
    bool open(const std::string& path, ReadProblem& problem);
    /// Reads it from its first byte.
    ReadResult read(ReportSink& sink, ReadProblem& problem);
    /// The form that makeWriter() (report/Writer.h) knows it by; empty when it is no report, before open() too.
    std::string_view form();

private:
    std::unique_ptr<Input> input_;
};

/// The same of a text in memory.
ReadResult readReportText(std::string_view text, ReportSink& sink, ReadProblem& problem);
ReadResult readReportText(std::string_view text, Report& report, ReadProblem& problem);

/// "report.xml:12: message", of standard input "standard input:12: message".
std::string problemText(const std::string& path, const ReadProblem& problem);

/// Makes a Report of the rows that come. Rows of a group that comes in several places are put together. Nothing is
/// owned.
class ReportFiller : public ReportSink
{
public:
    explicit ReportFiller(Report& report) : report_(report) {}
    void header(const Header& header) override;
    void group(const GroupRows& group, uint64_t line) override;
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

private:
    Report& report_;
    size_t current_ = 0;
};
} // namespace report
