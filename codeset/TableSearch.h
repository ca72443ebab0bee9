#pragma once

#include <memory>
#include <string>

#include "codeset/CodeTable.h"

/// Looks for a table of that name in all the places where tables can be. Null when none holds a sound one.
std::shared_ptr<const CodeTable> get_table(const std::string& name);

/// Loads the table from the file whose path is dir followed by name. A file that is no table holds the name of another
/// one in the same directory.
std::shared_ptr<const CodeTable> load_table(const std::string& dir, const std::string& name);
