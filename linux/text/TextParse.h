#pragma once

#include <cstdint>

// What is looked for in lines of text: words, and numbers and line ends as the C library of a 32-bit platform reads
// them, on every build.

/// strtol in base 10 with a 32-bit long: saturates at both ends, 0 for text without a number.
int32_t parseLong(const char* text);

/// strtoul with a 32-bit unsigned long: 0xFFFFFFFF when the number does not fit, wraps for a negative one, 0 for text
/// without a number.
uint32_t parseULong(const char* text, int base = 10);

/// Reads the number that *text begins with, as parseULong does, and moves *text behind it. False, with both left alone,
/// when there is none.
bool readULong(const char** text, uint32_t* number, int base = 10);

/// True when part stands anywhere in text.
bool contains(const char* text, const char* part);

/// Removes the last character of line when it is a control character of the locale (the newline, mostly).
void dropTrailingControl(char* line);

/// Strips leading and trailing white space in place.
void trim2(char* text);
