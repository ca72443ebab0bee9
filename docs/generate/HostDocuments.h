#pragma once

#include <ostream>

#include "docs/generate/IdNames.h"
#include "report/Report.h"

// The documents that are made from the host catalog (report/catalog/), so that they cannot differ from what invhwctl
// writes and reads.

/// Writes the second half of REPORT.md: every group and attribute with its type, marks, unit and source. names holds
/// the names of the attributes' ids. False when one has none.
bool writeHostDoc(std::ostream& out, const IdNames& names);

/// Writes the XML schema (1.0) of what `invhwctl scan` writes.
void writeHostSchema(std::ostream& out);

/// Writes the JSON schema (2020-12) of the JSON form.
void writeJsonSchema(std::ostream& out);

/// A report that holds every group with every attribute, word and enumeration text: the schemas must accept it.
report::Report hostSample();
