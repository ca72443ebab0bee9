#pragma once

#include <string>

#include "report/Reader.h"
#include "tool/CommandLine.h"

namespace tool
{
/// The option of the commands that refuse reports that were cut off, unless they are told otherwise.
constexpr OptionDef PARTIAL_OPTION = {"--partial", nullptr, nullptr,
                                      "take the rows of a report that was cut off, which is refused else"};

/// Whether a command goes on with what it read: the report is whole, or it was cut off and --partial is given, which is
/// told on standard error. Else the problem has been told.
bool acceptsReport(const CommandDef& command, const Arguments& arguments, const std::string& path,
                   report::ReadResult result, const report::ReadProblem& problem);
} // namespace tool
