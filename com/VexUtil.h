#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "com/VexCatalog.h"

// Utilities on value records (layout: com/VexTableAttrib.h) and look-ups in the catalog.

/// A text inside a value record: the number of characters with the terminating 0, then so many 32-bit wide characters.
/// It stands at byte 12 of a record from new[], so its words are aligned.
struct VexString {
    uint32_t count;
    wchar_t characters[1];
};
static_assert(sizeof(wchar_t) == 4, "wide characters are stored as 32 bits");

/// Length of a date-time text, which has no terminator.
constexpr size_t VEX_DATETIME_LENGTH = 26;

/// Bytes from the start of a value record to its value.
constexpr size_t VEX_HEADER_LENGTH = 12;

/// Reads the 32-bit word at byte offset of a record.
uint32_t vexRecordWord(const unsigned char* record, size_t offset);

/// Bytes that a stored string occupies.
unsigned long SizeofVexString(const VexString* string);

/// Bytes to allocate for text as a VexString, at one character a byte: 8 for a null or empty text.
unsigned long SizeAsVexString(const char* text);

/// Converts text from the current locale into dest, at most maxCharacters of them; bytes that are no character of the
/// locale end the text. Stores *runningSize into *runningOffset, adds the bytes used to *runningSize and returns them.
/// dest must have SizeAsVexString(text) zeroed bytes.
unsigned long StringToVexString(const char* text, VexString* dest, unsigned long maxCharacters,
                                unsigned long* runningSize, unsigned long* runningOffset);

/// Writes the local time of a time_t as the 26 characters "YYYY-MM-DD-hh.mm.ss.000000"; four zero bytes when it has no
/// local time.
void TimeToVexDateTime(long time, char* dest);

/// "VEX_UCHAR" and so on; "Undefined Attrib Type" for any other code.
const char* getVexAttribTypeAsString(unsigned long type);

/// Dumps a record to standard output: length, id, type and value.
void PrintVexAttribValue(const unsigned char* record);

/// Writes a record's value alone; nothing for an unknown type.
void PrintVexAttribValueToFile(FILE* stream, const unsigned char* record);

/// Writes the 26 characters of a date-time.
void PrintVexTimeBlockToFile(FILE* stream, const char* text);

/// Writes count bytes as upper-case hexadecimal digits between double quotes.
void PrintOctetStringToFile(FILE* stream, const unsigned char* bytes, unsigned long count);

/// Writes the pairs of an attribute's enumeration, one a line; nothing when it has none.
void PrintVexEnumToFile(FILE* stream, const vexAttribDef* attrib);

/// Writes a stored string escaped by dmtf_escape, as multibyte text of the current locale.
void PrintVexStringToFile(FILE* stream, const VexString* string);

/// Escapes backslash and double quote with a backslash and characters 1 to 31 as "\xNN". Returns a text from new[] that
/// the caller may delete, or text itself when it is empty.
wchar_t* dmtf_escape(wchar_t* text);

/// The name of a group; "Unknown" when the catalog has no such id.
const char* getGroupNameFromId(unsigned long groupId);
/// The id of a group by its exact name; 0 when there is none or name is null.
unsigned long getGroupIdFromName(const char* name);
/// The debug mask of a group by its exact name; 0 when there is none or name is null.
unsigned long getDebugMaskFromName(const char* name);
/// The catalog row of a group, or null.
const vexGroupDef* getGroupDefinitionFromId(unsigned long groupId);
/// The same in another catalog; null for a null catalog.
const vexGroupDef* findGroupDefinition(const vexGroupDef* catalog, unsigned long groupId);
/// The name of a group's attribute; null when there is none or group is null.
const char* getAttribNameFromId(const vexGroupDef* group, unsigned long attribId);
/// The catalog row of a group's attribute, or null.
const vexAttribDef* getAttribDefinitionFromId(const vexGroupDef* group, unsigned long attribId);
/// The text of value in the enumeration of the group's first attribute (not of the named one: kept for the callers that
/// rely on it; the report looks the attribute's own enumeration up). Null when there is none.
const char* getEnumAsciiValue(const vexGroupDef* group, unsigned long attribId, unsigned long value);
