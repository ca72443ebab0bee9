#pragma once

#include <cstdint>
#include <cstdio>

#include "com/VexCatalog.h"
#include "com/VexTable.h"

// The XML report: one "serviceData" element for every reported row, on standard output.

/// Writes a table: every row of a group that has key attributes, the first row of any other group.
void printXML(VexTable* table);

/// Makes an XML element name from a catalog name: letters, digits and ".-:_" stay, a leading digit gets "_" before it,
/// all else is dropped. Returns a text from new[] that the caller deletes; empty for a null text.
char* spaceOut(const char* text);

/// 1 when the attribute is a key of the group, else 0.
int isKey(const vexGroupDef* group, unsigned long attribId);

/// Writes the enumeration text of a VEX_ULONG record to standard output, as it stands in the catalog: neither escaped
/// nor converted, whatever stream is given. Returns 1 when it wrote one, 0 when there is none for this value.
int PrintEnumActual(FILE* stream, const vexGroupDef* group, unsigned long attribId, const unsigned char* record);

/// Writes a VEX_STRING record escaped and in UTF-8: its first 20480 bytes in the locale's encoding. Text that the
/// locale cannot express is left out whole.
void PrintVexAttribStringToXMLFile(FILE* stream, const unsigned char* record);

/// Escapes "&" and "<" of a NUL-terminated text in the locale's encoding and converts it to UTF-8. out must have room
/// for five bytes a byte of text and the terminator. Returns out.
char* io_esc_fixn(char* out, const char* text);

/// Writes a record of any type but VEX_STRING to standard output, in the report's rendering.
void PrintVexAttribValueLocal(const unsigned char* record);

/// The report's form of a 26-character date-time: one more zero behind it. The caller frees the text.
char* GetTimeBlockString(const char* text);
