#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/root/Answer.h"

namespace host
{
/// Reads a descriptor to its end, at most limit bytes. The size that a file claims is not trusted: attributes of the
/// kernel claim 0 or 4096, sparse files terabytes. An error on the way is the answer, whatever was read before it.
Answer<std::string> readBounded(int file, size_t limit);

/// Bytes.
struct LineLimits {
    size_t line;   // longer lines are passed over
    size_t file;   // looked at
    size_t chosen; // kept
};

/// Reads a descriptor piece by piece and keeps the lines that are wanted; cut when a limit ended that.
Answer<std::vector<std::string>> chooseLines(int file, const LineChoice& isWanted, const LineLimits& limits);
} // namespace host
