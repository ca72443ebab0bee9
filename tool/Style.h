#pragma once

#include "report/Terminal.h"

namespace tool
{
/// How text for people may look on standard output, or in the file that is written in its place: a terminal's width and
/// colours where it is one (colours unless NO_COLOR is set or the terminal says that it has none), else plain UTF-8.
report::TerminalStyle outputStyle(bool isStandardOutput);
} // namespace tool
