#pragma once

#include <optional>
#include <string>

namespace host
{
/// A text that a machine told, and the file or call that told it.
struct Fact {
    std::string value;
    std::string source;
};

/// A fact, or nothing where its source is missing or says nothing.
using MaybeFact = std::optional<Fact>;
} // namespace host
