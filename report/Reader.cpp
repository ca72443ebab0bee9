#include "report/Reader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <memory>

#include "report/JsonReader.h"
#include "report/Text.h"
#include "report/XmlReader.h"
#include "report/read/Input.h"

namespace report
{
namespace
{
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The first character tells the form.
std::string_view formOf(Input& input)
{
    std::string_view start = input.peek(Input::kBlock);
    if (start.starts_with(kByteOrderMark))
        start.remove_prefix(kByteOrderMark.size());
    start = trimmed(start);
    if (start.empty())
        return {};
    return start[0] == '<' ? "xml" : start[0] == '{' ? "json" : "";
}

ReadResult readInput(Input& input, ReportSink& sink, ReadProblem& problem)
{
    const std::string_view form = formOf(input);
    if (!form.empty())
        return form == "xml" ? readXml(input, sink, problem) : readJson(input, sink, problem);
    problem.line = 1;
    problem.message = "expected a report: XML, which begins with <, or JSON, which begins with {";
    return ReadResult::MALFORMED;
}

// A file that cannot be read on ends like one that was cut off: what the system said counts more.
ReadResult readFile(Input& input, ReportSink& sink, ReadProblem& problem)
{
    problem = {};
    const ReadResult result = readInput(input, sink, problem);
    if (input.error() == 0)
        return result;
    problem = {};
    problem.message = strerror(input.error());
    return ReadResult::UNREADABLE;
}

ReadResult fillReport(Report& report, const std::function<ReadResult(ReportSink&)>& read)
{
    Report filled;
    ReportFiller filler(filled);
    const ReadResult result = read(filler);
    report = std::move(filled);
    return result;
}
} // namespace

ReportFile::ReportFile() = default;
ReportFile::~ReportFile() = default;

bool ReportFile::open(const std::string& path, ReadProblem& problem)
{
    problem = {};
    input_ = Input::open(path, problem.message);
    if (input_ == nullptr || input_->keep())
        return input_ != nullptr;
    problem.message = strerror(input_->error() != 0 ? input_->error() : errno);
    return false;
}

ReadResult ReportFile::read(ReportSink& sink, ReadProblem& problem)
{
    if (!input_->rewind()) {
        problem = {};
        problem.message = strerror(errno);
        return ReadResult::UNREADABLE;
    }
    return readFile(*input_, sink, problem);
}

std::string_view ReportFile::form()
{
    return input_ != nullptr && input_->rewind() ? formOf(*input_) : std::string_view();
}

ReadResult readReport(const std::string& path, ReportSink& sink, ReadProblem& problem)
{
    problem = {};
    const std::unique_ptr<Input> input = Input::open(path, problem.message);
    return input != nullptr ? readFile(*input, sink, problem) : ReadResult::UNREADABLE;
}

ReadResult readReport(const std::string& path, Report& report, ReadProblem& problem)
{
    return fillReport(report, [&](ReportSink& sink) { return readReport(path, sink, problem); });
}

ReadResult readReportText(std::string_view text, ReportSink& sink, ReadProblem& problem)
{
    problem = {};
    Input input(text);
    return readInput(input, sink, problem);
}

ReadResult readReportText(std::string_view text, Report& report, ReadProblem& problem)
{
    return fillReport(report, [&](ReportSink& sink) { return readReportText(text, sink, problem); });
}

std::string problemText(const std::string& path, const ReadProblem& problem)
{
    const std::string file = path == "-" ? "standard input" : path;
    const std::string line = problem.line != 0 ? ":" + std::to_string(problem.line) : "";
    std::string place = problem.group;
    if (problem.row != 0)
        place += " row " + std::to_string(problem.row);
    if (!problem.attribute.empty())
        place += ", " + problem.attribute;
    if (!place.empty())
        place += ": ";
    return file + line + ": " + place + problem.message;
}

void ReportFiller::header(const Header& header)
{
    report_.program = header.program;
    report_.date = header.date;
}

void ReportFiller::group(const GroupRows& group, uint64_t)
{
    const auto found = std::find_if(report_.groups.begin(), report_.groups.end(), [&group](const GroupRows& other) {
        return other.name() == group.name() && other.version == group.version;
    });
    current_ = static_cast<size_t>(found - report_.groups.begin());
    if (found == report_.groups.end())
        report_.groups.push_back({group.group, group.element, group.version, {}});
}

void ReportFiller::row(const GroupRows&, Row& row, const RowLines&)
{
    report_.groups[current_].rows.push_back(std::move(row));
}
} // namespace report
