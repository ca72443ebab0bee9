#include "tool/ScanOutput.h"

#include <charconv>

#include "report/Writer.h"
#include "tool/OutputFile.h"
#include "tool/Progress.h"

namespace tool
{
static void writeReport(const report::Report& report, const Arguments& arguments, std::ostream& out)
{
    const std::string form = arguments.value("--format", scanoption::kFormats[0]);
    const auto writer = report::makeWriter(form, out, arguments.has("--sources"));
    report::write(report, *writer);
}

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
    return writeOutput(path, write, reason) ? EXIT_OK : fail(command, reason);
}
} // namespace tool
