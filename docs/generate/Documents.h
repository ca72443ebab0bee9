#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "scanner/XmlReport.h"

// The documents that are made from the catalog, so that they cannot differ from what the program writes.

/// Writes the reference of all groups, attributes and enumerations as Markdown.
void writeReportDoc(std::ostream& out);

/// Writes the XML schema (1.0) of the report.
void writeSchema(std::ostream& out);

/// Writes to standard output a report that holds every group with every attribute and every enumeration text that is
/// XML: the schema must accept it.
void writeSampleReport();

/// Reads a report; true when it has rows and every empty element in them is one whose source says that it may be empty.
/// Says on standard output which are not.
bool emptyElementsAreTold(const char* report);

/// The element that the report writes for a group or an attribute of this name.
inline std::string elementName(const char* name)
{
    return std::unique_ptr<char[]>(spaceOut(name)).get();
}
