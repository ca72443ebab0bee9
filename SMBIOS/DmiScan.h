#pragma once

#include "SMBIOS/TableBuffer.h"

/// The structure table as the intermediate entry point ("_DMI_") names it.
struct DmiTable {
    int revision = 0; // (major << 8) | minor
    int majorVersion = 0;
    int minorVersion = 0;
    int totalLength = 0;
    int numTables = 0;
    TableBuffer data;
};

/// Looks through the BIOS segment at physical address 0xF0000 for an anchor whose table can be read; checksums are not
/// tested. Returns false when there is none: the fields are then those of the last anchor.
bool scanForDmi(DmiTable* table);
