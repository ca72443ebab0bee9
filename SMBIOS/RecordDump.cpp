#include "SMBIOS/RecordDump.h"

#include <cstdio>

void dumpString(const char* name, const char* text)
{
    printf("\n   %-18s: >%s<", name, text == nullptr ? "(null)" : text);
}

void dumpByte(const char* name, unsigned value)
{
    printf("\n   %-18s: x%02X", name, value);
}

void dumpWord(const char* name, unsigned value)
{
    printf("\n   %-18s: x%04X", name, value);
}
