#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace host
{
/// How much JSON is taken: values within values, and values in all.
struct JsonLimits {
    size_t depth = 16;
    size_t values = 2'000'000;
};

/// Parses a JSON text. Returns false, with the reason, when it is none or goes beyond the limits. Of a name that comes
/// twice in an object the last value counts.
bool parseBounded(std::string_view text, const JsonLimits& limits, nlohmann::json& value, std::string& reason);
} // namespace host
