#pragma once

#include <cstddef>

/// Turns the name of a code set into that of its table: "DOS", "WIN" and "OS" become the locale's code set, only
/// letters and digits are kept, in upper case, and the aliases file has the last word. The result is cut to size.
void get_table_name(const char* name, char* out, size_t size);
