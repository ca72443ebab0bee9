// invhwctl redact: a report without what identifies its machine, network and people.

#include "report/Redact.h"
#include "tool/Commands.h"
#include "tool/KeyFile.h"
#include "tool/OutputFile.h"
#include "tool/ReadReport.h"

namespace tool
{
namespace
{
constexpr OptionDef kRedactOptions[] = {
    KEY_FILE_OPTION,
    {"--output", "-o", "FILE",
     "write the result to FILE, whole or not at all, mode 0600; \"-\", the default, is standard output"},
    PARTIAL_OPTION,
};
constexpr ExampleDef kRedactExamples[] = {
    {"invhwctl redact --key-file site.key -o public.xml report.xml", "a report that can be given away"},
    {"invhwctl scan --format json | invhwctl redact -k site.key -", "a redacted report of this machine, in JSON"},
    {"invhwctl redact -k site.key --partial -o public.xml cut.xml", "the rows of a report that was cut off"},
};

// The second reading, of a report that was read before; a stream that fails tells of what has gone wrong since.
void writeRedacted(report::ReportFile& file, const report::IdentifyingValues& values, const report::Header& header,
                   report::ReadResult before, std::ostream& out)
{
    const auto writer = report::makeWriter(file.form(), out, true);
    if (writer == nullptr) {
        out.setstate(std::ios::badbit);
        return;
    }
    report::RedactionWriter redacted(values, *writer);
    report::ReadProblem problem;
    writer->begin(header);
    if (file.read(redacted, problem) != before)
        out.setstate(std::ios::badbit);
    writer->end();
}

int runRedact(const Arguments& arguments)
{
    const std::string& path = arguments.operands[0];
    std::string reason;
    if (!arguments.has("--key-file"))
        return fail(REDACT_COMMAND.name, "missing option: --key-file FILE, which is made where there is none");
    report::ReportFile file;
    report::ReadProblem problem;
    if (!file.open(path, problem))
        return fail(REDACT_COMMAND.name, problemText(path, problem));
    KeyFile key(arguments.value("--key-file"));
    if (!key.read(reason))
        return fail(REDACT_COMMAND.name, reason);
    report::IdentifyingValues values(key.key());
    report::RedactionGatherer gatherer(values);
    const report::ReadResult result = file.read(gatherer, problem);
    if (!acceptsReport(REDACT_COMMAND, arguments, path, result, problem))
        return EXIT_TROUBLE;
    if (!gatherer.failure().empty())
        return fail(REDACT_COMMAND.name, path + ": " + gatherer.failure());
    values.finish();
    if (!key.keep(reason))
        return fail(REDACT_COMMAND.name, reason);
    const auto write = [&](std::ostream& out) { writeRedacted(file, values, gatherer.header(), result, out); };
    return writeOutput(arguments.value("--output", "-"), write, reason) ? EXIT_OK : fail(REDACT_COMMAND.name, reason);
}
} // namespace

constexpr CommandDef REDACT_COMMAND = {
    .name = "redact",
    .summary = "replace what identifies by pseudonyms",
    .description =
        "Reads a report of invhw or of invhwctl scan, in either form (\"-\" is standard input), and writes it with "
        "pseudonyms in place of serial numbers, addresses, UUIDs, names of hosts, domains and accounts, wherever they "
        "stand. A pseudonym has the form of its value and is always the same under one key, so that redacted reports "
        "still join and compare: keep the key secret, whoever has it can test a guess. Values of one or two "
        "characters, numbers of fewer than six digits, everyday words and names of system accounts are replaced where "
        "they identify, but not searched for in other texts; shorter than eight characters they must be a word there.",
    .operands = "FILE",
    .leastOperands = 1,
    .mostOperands = 1,
    .options = kRedactOptions,
    .examples = kRedactExamples,
    .run = runRedact,
};
} // namespace tool
