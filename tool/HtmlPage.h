#pragma once

#include "tool/CommandLine.h"

namespace tool
{
/// Writes the report that the command line names as one HTML page to --output or standard output, with all groups or
/// those that --group names. Returns the exit status; nothing is written before the whole report was read.
int writePage(const CommandDef& command, const Arguments& arguments);
} // namespace tool
