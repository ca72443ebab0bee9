#include "tool/BomFile.h"

#include "report/CycloneDx.h"
#include "tool/OutputFile.h"
#include "tool/ReadReport.h"
#include "tool/Spool.h"

namespace tool
{
int writeBom(const CommandDef& command, const Arguments& arguments)
{
    const std::string& path = arguments.operands[0];
    report::ReportFile file;
    report::ReadProblem problem;
    report::BomHead head;
    if (!file.open(path, problem))
        return fail(command.name, problemText(path, problem));
    if (!acceptsReport(command, arguments, path, file.read(head, problem), problem))
        return EXIT_TROUBLE;
    Spool components, dependencies;
    report::BomParts parts(head, components.stream(), dependencies.stream());
    if (file.read(parts, problem) == report::ReadResult::UNREADABLE)
        return fail(command.name, problemText(path, problem));
    parts.end();
    std::string reason;
    const auto write = [&](std::ostream& out) {
        beginBom(head, parts, out);
        components.copyTo(out);
        report::middleOfBom(out);
        dependencies.copyTo(out);
        report::endBom(out);
    };
    return writeOutput(arguments.value("--output", "-"), write, reason) ? EXIT_OK : fail(command.name, reason);
}
} // namespace tool
