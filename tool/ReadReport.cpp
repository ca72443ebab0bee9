#include "tool/ReadReport.h"

namespace tool
{
bool acceptsReport(const CommandDef& command, const Arguments& arguments, const std::string& path,
                   report::ReadResult result, const report::ReadProblem& problem)
{
    if (result == report::ReadResult::WHOLE)
        return true;
    fail(command.name, problemText(path, problem));
    return result == report::ReadResult::CUT_OFF && arguments.has(PARTIAL_OPTION.name);
}
} // namespace tool
