#pragma once

#include <cstdio>
#include <string>
#include <sys/types.h>

// The BIOS date in "hwxbios.mif", a management information file of other programs in the working directory.

/// The date MM/DD/YY of a date YYYY-MM-DD, in a text that the caller frees with free(); null for null and for a text
/// that is too short to hold a date.
char* changeFormat(const char* isoDate);

/// The text between the first two double quotes of line, written over the start of "MM/DD/AA" (a shorter text keeps the
/// template's rest); the template when there is none; null for null. The caller frees it with free().
char* extractDate(const char* line);

/// Brings the BIOS date of the file into line with isoDate. A file that is not there, has no date or has this one stays
/// as it is.
void hwxbios_mif_rewrite(const char* isoDate);

/// Where a MIF holds the BIOS date and what is to stand there instead.
struct MifChange {
    off_t offset = 0;     // of the date line
    size_t oldLength = 0; // its bytes, line end included
    std::string newLine;
};

/// Looks for the BIOS date. Returns false when there is none or when it is isoDate already. The file may hold any bytes
/// and lines of any length; a line is searched in pieces of 254 bytes.
bool findMifChange(FILE* mif, const char* isoDate, MifChange* change);

/// Copies a MIF with the change made; every byte outside the date line stays. Returns false when that fails.
bool copyMifChanged(FILE* from, FILE* to, const MifChange& change);
