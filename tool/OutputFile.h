#pragma once

#include <functional>
#include <ostream>
#include <string>

namespace tool
{
/// Writes a file whole or not at all: into a new file beside it, mode 0600, synced and renamed. "-" is standard output.
/// Returns false, with one line that names the file, when it could not be written; the old file is then as it was.
bool writeOutput(const std::string& path, const std::function<void(std::ostream&)>& write, std::string& reason);
} // namespace tool
