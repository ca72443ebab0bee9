#pragma once

#include <cstddef>
#include <string>

/// The longest path of a table or of the aliases file is below this.
constexpr size_t kPathLimit = 255;

/// The folder dir followed by subFolder; empty when dir is null or empty, and when the file called name in that folder
/// would have too long a path.
std::string folderBelow(const char* dir, const char* subFolder, const std::string& name);
