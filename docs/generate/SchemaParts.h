#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "com/VexCatalog.h"

// What the XML schemas of both programs' reports have alike.

/// Writes the beginning of a schema: its element "serviceDataList". madeBy is the comment on top.
void writeSchemaHead(std::ostream& out, std::string_view madeBy);

/// Writes the types of one row: its group's name and its value, one of the groups' elements.
void writeServiceData(std::ostream& out, const std::vector<std::string>& elements);

/// A text for an attribute value of the schema, in its quotes.
std::string quoted(std::string_view text);

/// A simple type's name for values of a type of the model: "ULONG" and so on.
const char* typeName(uint32_t type);

/// Writes a simple type for the values of an enumeration: one of its texts, or the number where a value has none.
void writeEnumType(std::ostream& out, std::string_view name, const vexEnumDef* values);

/// Writes the simple type DATETIME.
void writeDateTimeType(std::ostream& out);
