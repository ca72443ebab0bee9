#pragma once

#include <cstdio>
#include <vector>

// Dump files: a structure table as text, for offline work.

/// What a dump file holds.
struct DumpedTable {
    std::vector<unsigned char> bytes;
    int numTables = 0;
    int revision = 0;
};

enum class DumpResult {
    Read,
    Unreadable, // no file, a length that cannot be true, too few bytes, no digits where a number should be
    BadFormat,  // not format 1
};

/// Reads a dump; *table is set only when that succeeds.
DumpResult readDump(FILE* stream, DumpedTable* table);
DumpResult readDumpFile(const char* path, DumpedTable* table);
/// Writes a dump; a file that cannot be opened is left alone.
void writeDumpFile(const char* path, const unsigned char* bytes, int length, int numTables, int revision);
