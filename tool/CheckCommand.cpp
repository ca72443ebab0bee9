// invhwctl check: reports against the catalog.

#include <iostream>

#include <nlohmann/json.hpp>

#include "report/Check.h"
#include "report/Reader.h"
#include "tool/Commands.h"
#include "tool/ReadReport.h"

namespace tool
{
namespace
{
constexpr int EXIT_FINDINGS = 1;
constexpr const char* kFormats[] = {"text", "json"};

constexpr OptionDef kCheckOptions[] = {
    {"--format", "-f", "FORM", "form of the findings: text (the default) or json", false, kFormats},
    {"--rules", nullptr, nullptr, "list the rules, one a line, in place of checking"},
};
constexpr ExampleDef kCheckExamples[] = {
    {"invhwctl check report.xml", "one line for everything that is not as the catalog says"},
    {"invhwctl scan | invhwctl check --format json -", "findings for a program"},
    {"invhwctl check --rules", "what is checked"},
};

// Writes findings as they come.
class Findings
{
public:
    Findings(std::ostream& out, bool isJson) : out_(out), isJson_(isJson) {}
    void begin() { out_ << (isJson_ ? "[" : ""); }
    void end() { out_ << (isJson_ ? count == 0 ? "]\n" : "\n]\n" : ""); }
    void add(const std::string& file, const report::Finding& finding)
    {
        ++count;
        if (isJson_)
            addJson(file, finding);
        else
            addText(file, finding);
    }

    uint64_t count = 0;

private:
    void addText(const std::string& file, const report::Finding& finding);
    void addJson(const std::string& file, const report::Finding& finding);

    std::ostream& out_;
    bool isJson_;
};

// "report.xml:12: Storage row 1, Index: range: expected ..."
void Findings::addText(const std::string& file, const report::Finding& finding)
{
    report::ReadProblem place;
    place.line = finding.line;
    place.group = finding.group;
    place.row = finding.row;
    place.attribute = finding.attribute;
    place.message = std::string(finding.rule->name) + ": " + finding.message;
    out_ << problemText(file, place) << '\n';
}

void Findings::addJson(const std::string& file, const report::Finding& finding)
{
    const nlohmann::ordered_json json = {
        {"file", file},
        {"line", finding.line},
        {"group", finding.group},
        {"row", finding.row},
        {"attribute", finding.attribute},
        {"rule", finding.rule->name},
        {"message", finding.message},
    };
    out_ << (count == 1 ? "\n" : ",\n") << json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

int listRules()
{
    size_t widest = 0;
    for (const report::Rule& rule : report::checkRules())
        widest = std::max(widest, std::string_view(rule.name).size());
    for (const report::Rule& rule : report::checkRules())
        std::cout << rule.name << std::string(widest + 2 - std::string_view(rule.name).size(), ' ') << rule.what
                  << '\n';
    return EXIT_OK;
}

// False when the file cannot be opened or read.
bool checkFile(const std::string& path, Findings& findings)
{
    report::Checker checker([&](const report::Finding& finding) { findings.add(path, finding); });
    report::ReadProblem problem;
    const report::ReadResult result = readReport(path, checker, problem);
    checker.end(result, problem);
    if (result == report::ReadResult::UNREADABLE)
        fail(CHECK_COMMAND.name, problemText(path, problem));
    return result != report::ReadResult::UNREADABLE;
}

int runCheck(const Arguments& arguments)
{
    if (arguments.has("--rules"))
        return listRules();
    if (arguments.operands.empty())
        return fail(CHECK_COMMAND.name, "missing operand: FILE...");
    Findings findings(std::cout, arguments.value("--format") == "json");
    bool areReadable = true;
    findings.begin();
    for (const std::string& path : arguments.operands)
        areReadable = checkFile(path, findings) && areReadable;
    findings.end();
    std::cout.flush();
    if (!std::cout.good())
        return fail(CHECK_COMMAND.name, "standard output cannot be written");
    return !areReadable ? EXIT_TROUBLE : findings.count != 0 ? EXIT_FINDINGS : EXIT_OK;
}
} // namespace

constexpr CommandDef CHECK_COMMAND = {
    .name = "check",
    .summary = "check reports against the catalog",
    .description =
        "Reads reports of invhw or of invhwctl scan, in either form (\"-\" is standard input), and tells what is "
        "not as the catalog says: one line, or one JSON object, a finding, with file, line, group, row, "
        "attribute and rule. Exit status: 0 nothing found, 1 something found, 2 a file cannot be read.",
    .operands = "FILE...",
    .leastOperands = 0,
    .mostOperands = SIZE_MAX,
    .options = kCheckOptions,
    .examples = kCheckExamples,
    .run = runCheck,
};
} // namespace tool
