#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "report/Report.h"

// What the texts of report files say as values.

namespace report
{
/// What a text of the XML form says as a value of an attribute (null: one that the catalog does not know, which stays a
/// text). valueText() of the result is the text again: one that its type would write otherwise ("-1" of a VEX_ULONG,
/// "007", "1,5", an unknown word of an enumeration) stays a text.
Content contentOfText(const Attribute* attribute, std::string text);

/// The same of a string of the JSON form, whose date-times are RFC 3339.
Content contentOfJsonText(const Attribute* attribute, std::string text);

/// What a value means, whichever program wrote it: a negative VEX_ULONG is the same 32 bits, an enumeration's decimal
/// number its code, a number with a decimal comma or other zeros a number. A text that its type cannot be stays one.
Content meaningOf(const Value& value);

/// A date-time of the XML form ("2026-11-21-11.35.34.0000000"), or of RFC 3339 with or without offset, its fraction
/// zeros alone. Absent when the text is none or no such time exists.
std::optional<DateTime> parseXmlDateTime(std::string_view text);
std::optional<DateTime> parseRfc3339(std::string_view text);
} // namespace report
