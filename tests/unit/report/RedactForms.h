#pragma once

#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "report/Redact.h"

// Redaction of texts in memory, for tests.

inline const std::string kRedactKey = "0123456789abcdef";

/// The redacted form of a report's text, in the same form.
inline std::string redactedText(const std::string& text, const std::string& key = kRedactKey)
{
    report::IdentifyingValues values(key);
    report::RedactionGatherer gatherer(values);
    report::ReadProblem problem;
    EXPECT_EQ(readReportText(text, gatherer, problem), report::ReadResult::WHOLE) << problem.message;
    EXPECT_EQ(gatherer.failure(), "");
    values.finish();
    std::ostringstream out;
    const auto writer = report::makeWriter(text.starts_with('{') ? "json" : "xml", out, true);
    report::RedactionWriter redacted(values, *writer);
    writer->begin(gatherer.header());
    EXPECT_EQ(readReportText(text, redacted, problem), report::ReadResult::WHOLE) << problem.message;
    writer->end();
    return out.str();
}
