#pragma once

#include <cstdint>

// The direct way to the firmware's System Information structure, apart from the structure table that SMBIOSTable holds:
// the entry point is looked for on paragraph boundaries and its checksums are tested.

/// The 32 bytes of an SMBIOS 2.x entry point ("_SM_") as they stand in memory.
struct smbios_table_entry_point {
    unsigned char bytes[32];

    unsigned char length() const { return bytes[5]; }
    unsigned char majorVersion() const { return bytes[6]; }
    uint16_t tableLength() const;
    uint32_t tableAddress() const;
    uint16_t structureCount() const;
};

/// The System Information structure: its first eight bytes, the last four of which are the numbers of its strings, and
/// copies of its strings, entry i being string number i + 1. Array and strings are from malloc.
struct smbios_sysinfo_table_entry {
    unsigned char header[8];
    char** strings;
};

/// The first "_SM_" on a 16-byte boundary of area, or null.
unsigned char* find_signature(unsigned char* area, unsigned long length);

/// Copies the entry point of the BIOS segment. Returns 0, or -1 when physical memory cannot be mapped or the first
/// "_SM_" fails a check; later ones are not tried.
int find_table_ep(smbios_table_entry_point* ep);

/// Finds the first System Information structure (type 1) of the mapped structure table. Returns the number of strings
/// copied: 0, and no array, when there is no such structure or it has no strings. The search may leave the table's
/// declared length and ends with the last mapped page.
int find_entry(const unsigned char* table, const smbios_table_entry_point* ep, smbios_sysinfo_table_entry* out);

/// Frees what find_entry copied; count is its result.
void free_entry(smbios_sysinfo_table_entry* entry, int count);
