// invhwctl scan: what this machine is, or what a copy of one was.

#include <charconv>
#include <memory>

#include "host/Scan.h"
#include "report/Writer.h"
#include "tool/Commands.h"
#include "tool/OutputFile.h"
#include "tool/Progress.h"

namespace tool
{
namespace
{
constexpr const char* kFormats[] = {"xml", "json"};

constexpr OptionDef kGroup = {"--group", "-g", "NAME",
                              "only this group, by its name (\"IP Address\") or its element's (IPAddress); repeatable",
                              true};
constexpr OptionDef kFormat = {"--format", "-f",    "FORM", "form of the report: xml (the default) or json",
                               false,      kFormats};
constexpr OptionDef kOutput = {"--output", "-o", "FILE",
                               "write the report to FILE, whole or not at all, mode 0600; \"-\" is standard output"};
constexpr OptionDef kSources = {"--sources", nullptr, nullptr, "say of every value which file or call it came from"};
constexpr OptionDef kDeadline = {"--deadline", nullptr, "SECONDS",
                                 "end the scan after so many seconds with what is there (5)"};

constexpr OptionDef kScanOptions[] = {
    kGroup,
    kFormat,
    kOutput,
    {"--root", nullptr, "DIR",
     "scan a copy of a machine's files, such as a recording; nothing of this machine is asked"},
    kSources,
    kDeadline,
};
constexpr ExampleDef kScanExamples[] = {
    {"invhwctl scan --format json -o report.json", "the whole report, into a file that only you can read"},
    {"invhwctl scan --group Storage --group \"Network Adapter\" --sources",
     "two groups, with the file that each value came from"},
    {"invhwctl scan --root /srv/recordings/host17", "the report of a recorded machine"},
};

bool readDeadline(const Arguments& arguments, double& seconds, std::string& reason)
{
    constexpr double kMost = 3600;
    if (!arguments.has("--deadline"))
        return true;
    const std::string text = arguments.value("--deadline");
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error == std::errc() && end == text.data() + text.size() && seconds > 0 && seconds <= kMost)
        return true;
    reason = "--deadline " + text + ": expected seconds, above 0 and at most 3600";
    return false;
}

bool readGroups(const Arguments& arguments, std::vector<uint32_t>& groups, std::string& reason)
{
    for (const std::string& name : arguments.values("--group")) {
        if (const report::Group* group = report::findGroupByAnyName(name)) {
            groups.push_back(group->id);
            continue;
        }
        std::vector<std::string> names;
        for (const report::Group& group : report::catalog())
            names.push_back(group.name);
        reason = "unknown group " + name + suggestion(name, names);
        return false;
    }
    return true;
}

void writeReport(const report::Report& report, const Arguments& arguments, std::ostream& out)
{
    const bool sources = arguments.has("--sources");
    std::unique_ptr<report::Writer> writer;
    if (arguments.value("--format", kFormats[0]) == "json")
        writer = std::make_unique<report::JsonWriter>(out, sources);
    else
        writer = std::make_unique<report::XmlWriter>(out, sources);
    report::write(report, *writer);
}

int fail(const char* command, const std::string& reason)
{
    complain(std::string(command) + ": " + reason);
    return EXIT_TROUBLE;
}

// Scans, and writes the report to a file, to standard output, or, when path is empty, nowhere.
int scanTo(const char* command, const std::string& path, const Arguments& arguments, host::ScanOptions& options)
{
    std::string reason;
    if (!readDeadline(arguments, options.deadlineSeconds, reason) || !readGroups(arguments, options.groups, reason))
        return fail(command, reason);
    report::Report report;
    {
        Progress progress("groups");
        options.onProgress = [&progress](size_t ready, size_t all) { progress.show(ready, all); };
        if (!host::scan(options, report, reason))
            return fail(command, reason);
    }
    const auto write = [&](std::ostream& out) { writeReport(report, arguments, out); };
    if (!path.empty() && !writeOutput(path, write, reason))
        return fail(command, reason);
    return EXIT_OK;
}

int runScan(const Arguments& arguments)
{
    host::ScanOptions options;
    options.root = arguments.value("--root", "/");
    return scanTo("scan", arguments.value("--output", "-"), arguments, options);
}
} // namespace

constexpr CommandDef SCAN_COMMAND = {
    .name = "scan",
    .summary = "report what this machine is",
    .description = "Writes a report of this machine, from what its kernel tells: its firmware, processors, memory, "
                   "disks, file systems, "
                   "network, devices and software. Runs as any user; what only root may read is told in the group Scan "
                   "Status. Starts no "
                   "other program, changes nothing, and ends within its deadline.",
    .operands = nullptr,
    .leastOperands = 0,
    .mostOperands = 0,
    .options = kScanOptions,
    .examples = kScanExamples,
    .run = runScan,
};
} // namespace tool
