#pragma once

#include <nlohmann/json.hpp>

#include "report/Report.h"

namespace report
{
/// What a value is in the JSON form: a number, true or false, a text.
nlohmann::ordered_json jsonContent(const Value& value);

/// JSON as one line. Texts of values are valid UTF-8 already; names of files that a user gave need not be.
std::string jsonLine(const nlohmann::ordered_json& json);
} // namespace report
