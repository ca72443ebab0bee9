#pragma once

#include "report/Reader.h"
#include "report/read/Input.h"

namespace report
{
/// Reads the JSON form (docs/invhw-report.schema.json) as it streams. Where the versions of the groups do not stand
/// before the groups, as in a file whose members were sorted, the file is read twice. Sizes are bounded
/// (read/RowMaker.h).
ReadResult readJson(Input& input, ReportSink& sink, ReadProblem& problem);
} // namespace report
