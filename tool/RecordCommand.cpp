// invhwctl record: a copy of what a scan asks this machine, for scans of it elsewhere.

#include "host/Record.h"
#include "tool/Commands.h"
#include "tool/KeyFile.h"
#include "tool/Progress.h"
#include "tool/ScanOutput.h"

namespace tool
{
namespace
{
constexpr OptionDef kRecordOptions[] = {
    scanoption::kGroup,
    scanoption::kFormat,
    scanoption::kOutput,
    scanoption::kSources,
    {"--redact", nullptr, nullptr, "put pseudonyms in place of what identifies, as redact does; needs --key-file"},
    KEY_FILE_OPTION,
    {"--deadline", nullptr, "SECONDS", "give up after so many seconds (120)"},
};
constexpr ExampleDef kRecordExamples[] = {
    {"invhwctl record host17 && tar -czf host17.tar.gz host17", "everything that a scan of this machine asks"},
    {"invhwctl record host17 -o host17.xml", "also the report that every scan of the recording gives"},
    {"invhwctl record --redact --key-file site.key host17", "a recording that can be given away"},
    {"invhwctl record host17 --group Storage", "what the group Storage needs and nothing else"},
};

int runRecord(const Arguments& arguments)
{
    host::RecordOptions options;
    std::string reason;
    if (!readDeadline(arguments, options.deadlineSeconds, reason) || !readGroups(arguments, options.groups, reason))
        return fail("record", reason);
    const std::string& folder = arguments.operands.front();
    if (arguments.has("--redact") != arguments.has("--key-file"))
        return fail("record", "--redact and --key-file FILE go together");
    KeyFile key(arguments.value("--key-file"));
    if (arguments.has("--redact") && (!key.read(reason) || !key.keep(reason)))
        return fail("record", reason);
    options.redactionKey = key.key();
    {
        Progress progress("groups");
        options.onProgress = [&progress](size_t ready, size_t all) { progress.show(ready, all); };
        if (!host::record(options, folder, reason))
            return fail("record", reason);
    }
    if (!arguments.has("--output"))
        return EXIT_OK;
    host::ScanOptions scan;
    scan.root = folder;
    return scanTo("record", arguments.value("--output"), arguments, scan);
}
} // namespace

constexpr CommandDef RECORD_COMMAND = {
    .name = "record",
    .summary = "copy what a scan asks, to scan it elsewhere",
    .description = "Records this machine: writes what a scan asks of it, and what it answers, to the folder DIR, which "
                   "must not be there yet or be empty. \"invhwctl scan --root DIR\" gives the report of now, anywhere. "
                   "Only you can read the recording: it holds serial numbers, and files as they are, with secrets that "
                   "a report masks. Run as any user, it holds what that user may read.",
    .operands = "DIR",
    .leastOperands = 1,
    .mostOperands = 1,
    .options = kRecordOptions,
    .examples = kRecordExamples,
    .run = runRecord,
};
} // namespace tool
