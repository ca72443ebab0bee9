#pragma once

// The lines of the records' dump() on standard output: a name of up to 18 columns and the value.

void dumpString(const char* name, const char* text); // text may be null
void dumpByte(const char* name, unsigned value);
void dumpWord(const char* name, unsigned value);
