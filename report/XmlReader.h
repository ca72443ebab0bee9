#pragma once

#include "report/Reader.h"
#include "report/read/Input.h"

namespace report
{
/// Reads the XML form (docs/REPORT.md) as it streams: what `invhw` writes, what `invhwctl scan` writes. No entities but
/// the five of XML itself, no document types, nothing from elsewhere; UTF-8 alone. Sizes are bounded (read/RowMaker.h).
ReadResult readXml(Input& input, ReportSink& sink, ReadProblem& problem);
} // namespace report
