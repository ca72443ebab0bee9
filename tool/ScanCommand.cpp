// invhwctl scan: what this machine is, or what a copy of one was.

#include "tool/Commands.h"
#include "tool/ScanOutput.h"

namespace tool
{
namespace
{
constexpr OptionDef kScanOptions[] = {
    scanoption::kGroup,
    scanoption::kFormat,
    scanoption::kOutput,
    {"--root", nullptr, "DIR",
     "scan a copy of a machine's files, such as a recording; nothing of this machine is asked"},
    scanoption::kSources,
    {"--deadline", nullptr, "SECONDS", "end the scan after so many seconds with what is there (5)"},
};
constexpr ExampleDef kScanExamples[] = {
    {"invhwctl scan --format json -o report.json", "the whole report, into a file that only you can read"},
    {"invhwctl scan --group Storage --group \"Network Adapter\" --sources",
     "two groups, with the file that each value came from"},
    {"invhwctl scan --root /srv/recordings/host17", "the report of a recorded machine"},
};

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
