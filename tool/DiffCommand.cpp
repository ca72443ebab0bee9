// invhwctl diff: what has changed from one report to another.

#include <iostream>

#include "report/Diff.h"
#include "tool/Commands.h"
#include "tool/ReadReport.h"

namespace tool
{
namespace
{
constexpr int EXIT_DIFFERENT = 1;
constexpr const char* kFormats[] = {"text", "json"};

constexpr OptionDef kDiffOptions[] = {
    {"--all", "-a", nullptr, "compare volatile attributes too: free space, clocks, temperatures, states"},
    {"--format", "-f", "FORM", "form of the changes: text (the default) or json", false, kFormats},
    PARTIAL_OPTION,
};
constexpr ExampleDef kDiffExamples[] = {
    {"invhwctl diff monday.xml friday.xml", "one line for everything that has changed"},
    {"invhwctl scan | invhwctl diff --all monday.xml -", "what has changed since, free space and clocks too"},
    {"invhwctl diff --format json monday.json friday.xml", "changes for a program; the forms may differ"},
    {"invhwctl diff --partial monday.xml friday.xml", "what can be read of reports that were cut off"},
};

// False, and the reason has been told, when the report cannot be compared.
bool readSide(const Arguments& arguments, const std::string& path, report::DiffSide& side)
{
    report::ReadProblem problem;
    const report::ReadResult result = readReport(path, side, problem);
    if (!acceptsReport(DIFF_COMMAND, arguments, path, result, problem))
        return false;
    problem = {};
    problem.message = side.failure();
    if (!problem.message.empty())
        fail(DIFF_COMMAND.name, problemText(path, problem));
    return problem.message.empty();
}

// Writes changes as they come, and counts them.
class Changes
{
public:
    Changes(std::ostream& out, bool isJson) : out_(out), isJson_(isJson) { out_ << (isJson_ ? "[" : ""); }
    void add(const report::Change& change)
    {
        ++count;
        if (isJson_)
            out_ << (count == 1 ? "\n" : ",\n") << changeJson(change);
        else
            out_ << changeText(change);
    }
    void end() { out_ << (isJson_ ? count == 0 ? "]\n" : "\n]\n" : ""); }

    uint64_t count = 0;

private:
    std::ostream& out_;
    bool isJson_;
};

int runDiff(const Arguments& arguments)
{
    const std::string &old = arguments.operands[0], &now = arguments.operands[1];
    if (old == "-" && now == "-")
        return fail(DIFF_COMMAND.name, "standard input can be one of the reports, not both");
    report::DiffSide sides[2];
    if (!readSide(arguments, old, sides[0]) || !readSide(arguments, now, sides[1]))
        return EXIT_TROUBLE;
    Changes changes(std::cout, arguments.value("--format") == "json");
    const bool isWhole = diff(sides[0], sides[1], arguments.has("--all"),
                              [&changes](const report::Change& change) { changes.add(change); });
    for (const report::DiffSide& side : sides)
        if (!isWhole && !side.failure().empty())
            return fail(DIFF_COMMAND.name, side.failure());
    changes.end();
    std::cout.flush();
    if (!std::cout.good())
        return fail(DIFF_COMMAND.name, "standard output cannot be written");
    return changes.count != 0 ? EXIT_DIFFERENT : EXIT_OK;
}
} // namespace

constexpr CommandDef DIFF_COMMAND = {
    .name = "diff",
    .summary = "tell what has changed from one report to another",
    .description =
        "Compares two reports of invhw or of invhwctl scan, in either form (\"-\" is standard input): a line for "
        "every row that is new (+) or gone (-) and for every attribute that has changed (~). Rows are paired by what "
        "names the thing, a disk's WWN for one, and not by their place; what always changes is left out. Of reports "
        "of the two programs what both tell is compared. Exit status: 0 nothing has changed, 1 something has, 2 "
        "trouble.",
    .operands = "OLD NEW",
    .leastOperands = 2,
    .mostOperands = 2,
    .options = kDiffOptions,
    .examples = kDiffExamples,
    .run = runDiff,
};
} // namespace tool
