#pragma once

#include <ostream>

#include "tool/CommandLine.h"

// Every subcommand, each declared and run in the file of its name (tool/<Name>Command.cpp).

namespace tool
{
extern const CommandDef SCAN_COMMAND;
extern const CommandDef RECORD_COMMAND;
extern const CommandDef SHOW_COMMAND;
extern const CommandDef CHECK_COMMAND;
extern const CommandDef DIFF_COMMAND;
extern const CommandDef CONVERT_COMMAND;
extern const CommandDef REDACT_COMMAND;

/// Version and optional libraries.
void printVersion(std::ostream& out);
} // namespace tool
