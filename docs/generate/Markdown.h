#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "com/VexCatalog.h"

// Markdown that both halves of REPORT.md are made of.

/// A text for a table's cell: what would end it or begin markup is escaped.
std::string cell(std::string_view text);

/// The anchor of a heading as Markdown viewers make it: lower case, a hyphen for a blank, other punctuation left out.
std::string anchor(std::string_view heading);

/// A link to a heading.
std::string linkTo(std::string_view text, std::string_view heading);

/// Writes the texts of an enumeration's values as a table.
void writeValues(std::ostream& out, std::string_view attribute, const vexEnumDef* values);
