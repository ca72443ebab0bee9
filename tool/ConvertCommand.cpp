// invhwctl convert: a report in another form.

#include <cerrno>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <sys/stat.h>

#include "report/Csv.h"
#include "report/Reader.h"
#include "report/Writer.h"
#include "tool/BomFile.h"
#include "tool/Commands.h"
#include "tool/HtmlPage.h"
#include "tool/OutputFile.h"
#include "tool/ReadReport.h"
#include "tool/Spool.h"

namespace tool
{
namespace
{
constexpr const char* kForms[] = {"xml", "json", "csv", "cyclonedx", "html"};
constexpr size_t kMostGroups = 10'000;

constexpr OptionDef kConvertOptions[] = {
    {"--to", "-t", "FORM",
     "form of the result: xml, json, csv, cyclonedx (a bill of materials, CycloneDX 1.6 JSON), or html, the page of "
     "invhwctl show --html",
     false, kForms},
    {"--output", "-o", "FILE",
     "write the result to FILE, whole or not at all, mode 0600; \"-\", the default, is standard output. Of csv, FILE "
     "is a "
     "folder, made where there is none, that gets a file a group"},
    {"--spreadsheet", nullptr, nullptr,
     "of csv: put ' before cells that begin with = + - or @, which spreadsheets would take for formulas"},
    PARTIAL_OPTION,
};
constexpr ExampleDef kConvertExamples[] = {
    {"invhwctl convert --to json -o report.json report.xml", "the JSON form of a report of invhw or of invhwctl scan"},
    {"invhw | invhwctl convert --to json -", "the JSON form of what invhw finds now"},
    {"invhwctl convert --to csv --spreadsheet -o tables report.xml",
     "tables/Storage.csv and a file for every other group"},
    {"invhwctl convert --to cyclonedx -o bom.json report.json",
     "parts, firmware, drivers and packages as a bill of materials"},
    {"invhwctl convert --to xml --partial report.json", "what can be read of a report that was cut off"},
};

// Writes rows as they come, and keeps what must be written before them.
class Converter : public report::ReportSink
{
public:
    Converter(report::Writer& writer, bool isJson) : writer_(writer), isJson_(isJson) {}

    void header(const report::Header& header) override
    {
        header_.program = header.program;
        header_.date = header.date;
    }
    void group(const report::GroupRows& group, uint64_t line) override;
    void row(const report::GroupRows& group, report::Row& row, const report::RowLines&) override;

    const report::Header& head() const { return header_; }
    /// Why the result cannot have this form, and the line; empty when it can.
    const std::string& failure() const { return failure_; }
    uint64_t failureLine() const { return failureLine_; }

private:
    report::Writer& writer_;
    bool isJson_;
    report::Header header_;
    std::set<std::string, std::less<>> groups_; // of which a row was written
    std::string current_;
    uint64_t line_ = 0;
    std::string failure_;
    uint64_t failureLine_ = 0;
};

void Converter::group(const report::GroupRows&, uint64_t line)
{
    current_.clear();
    line_ = line;
}

void Converter::row(const report::GroupRows& group, report::Row& row, const report::RowLines&)
{
    if (!failure_.empty())
        return;
    if (current_.empty()) {
        current_ = group.name();
        const bool isNew = groups_.insert(current_).second;
        if (isNew)
            header_.versions.emplace_back(current_, group.version);
        if (isJson_ && !isNew)
            failure_ = "rows of " + current_ + " stand in two places, which the JSON form cannot say";
        if (groups_.size() > kMostGroups)
            failure_ = "more than " + std::to_string(kMostGroups) + " groups";
        failureLine_ = line_;
    }
    if (failure_.empty())
        writer_.row(group, row);
}

// One report into one text: nothing of it is written before the whole report was read.
int convertToText(const Arguments& arguments)
{
    const std::string form = arguments.value("--to"), path = arguments.operands[0];
    Spool body;
    const auto writer = report::makeWriter(form, body.stream(), true);
    Converter converter(*writer, form == "json");
    report::ReadProblem problem;
    const report::ReadResult result = readReport(path, converter, problem);
    if (!acceptsReport(CONVERT_COMMAND, arguments, path, result, problem))
        return EXIT_TROUBLE;
    if (!converter.failure().empty()) {
        problem = {};
        problem.line = converter.failureLine();
        problem.message = converter.failure();
        return fail(CONVERT_COMMAND.name, problemText(path, problem));
    }
    writer->end();
    std::string reason;
    const auto write = [&](std::ostream& out) {
        report::makeWriter(form, out, true)->begin(converter.head());
        body.copyTo(out);
    };
    return writeOutput(arguments.value("--output", "-"), write, reason) ? EXIT_OK : fail(CONVERT_COMMAND.name, reason);
}

// The lines of every group, each in a temporary file of its own.
class CsvRows : public report::ReportSink
{
public:
    CsvRows(const report::ColumnsSink& columns, bool isForSpreadsheet)
        : columns_(columns), isForSpreadsheet_(isForSpreadsheet)
    {
    }
    void row(const report::GroupRows& group, report::Row& row, const report::RowLines&) override
    {
        const auto columns = columns_.groups.find(group.name());
        if (columns == columns_.groups.end())
            return; // the file has changed since it was read first
        std::unique_ptr<Spool>& spool = spools[columns->first];
        if (spool == nullptr)
            spool = std::make_unique<Spool>();
        spool->stream() << csvRow(columns->second, row, isForSpreadsheet_);
    }

    std::map<std::string, std::unique_ptr<Spool>> spools;

private:
    const report::ColumnsSink& columns_;
    bool isForSpreadsheet_;
};

bool makeFolder(const std::string& path, std::string& reason)
{
    struct stat status;
    if (mkdir(path.c_str(), 0700) == 0 || (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)))
        return true;
    reason = path + ": " + strerror(errno == EEXIST ? ENOTDIR : errno);
    return false;
}

bool writeTables(const std::string& folder, const report::ColumnsSink& columns, CsvRows& rows, bool isForSpreadsheet,
                 std::string& reason)
{
    if (!makeFolder(folder, reason))
        return false;
    for (const auto& [name, spool] : rows.spools) {
        const std::string heading = csvHeading(columns.groups.find(name)->second, isForSpreadsheet);
        const auto write = [&heading, &spool = spool](std::ostream& out) {
            out << heading;
            spool->copyTo(out);
        };
        std::string path = folder;
        path.append("/").append(name).append(".csv");
        if (!writeOutput(path, write, reason))
            return false;
    }
    return true;
}

int convertToCsv(const Arguments& arguments)
{
    const std::string path = arguments.operands[0], folder = arguments.value("--output", "-");
    if (folder == "-")
        return fail(CONVERT_COMMAND.name, "--to csv: expected a folder for its files, --output DIR");
    report::ReportFile file;
    report::ReadProblem problem;
    report::ColumnsSink columns;
    if (!file.open(path, problem))
        return fail(CONVERT_COMMAND.name, problemText(path, problem));
    if (!acceptsReport(CONVERT_COMMAND, arguments, path, file.read(columns, problem), problem))
        return EXIT_TROUBLE;
    if (!columns.failure.empty())
        return fail(CONVERT_COMMAND.name, path + ": " + columns.failure);
    const bool isForSpreadsheet = arguments.has("--spreadsheet");
    CsvRows rows(columns, isForSpreadsheet);
    if (file.read(rows, problem) == report::ReadResult::UNREADABLE)
        return fail(CONVERT_COMMAND.name, problemText(path, problem));
    std::string reason;
    return writeTables(folder, columns, rows, isForSpreadsheet, reason) ? EXIT_OK : fail(CONVERT_COMMAND.name, reason);
}

int runConvert(const Arguments& arguments)
{
    const std::string form = arguments.value("--to");
    if (form.empty())
        return fail(CONVERT_COMMAND.name, "missing option: --to xml, json, csv, cyclonedx or html");
    if (form != "csv" && arguments.has("--spreadsheet"))
        return fail(CONVERT_COMMAND.name, "--spreadsheet: expected --to csv");
    if (form == "cyclonedx")
        return writeBom(CONVERT_COMMAND, arguments);
    if (form == "html")
        return writePage(CONVERT_COMMAND, arguments);
    return form == "csv" ? convertToCsv(arguments) : convertToText(arguments);
}
} // namespace

constexpr CommandDef CONVERT_COMMAND = {
    .name = "convert",
    .summary = "write a report in another form",
    .description =
        "Reads a report of invhw or of invhwctl scan, in its XML or JSON form, whichever FILE holds (\"-\" is "
        "standard input), and writes it in another. A report that became JSON becomes the same XML again, byte "
        "for byte. What is not well-formed is refused, with its line, and nothing is written then.",
    .operands = "FILE",
    .leastOperands = 1,
    .mostOperands = 1,
    .options = kConvertOptions,
    .examples = kConvertExamples,
    .run = runConvert,
};
} // namespace tool
