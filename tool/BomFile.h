#pragma once

#include "tool/CommandLine.h"

namespace tool
{
/// Writes the report that the command line names as a bill of materials (CycloneDX 1.6, JSON) to --output or standard
/// output. Returns the exit status; nothing is written before the whole report was read.
int writeBom(const CommandDef& command, const Arguments& arguments);
} // namespace tool
