#include "SMBIOS/SMBIOSTable.h"

void SMBIOSTable::initializeGlobalTable(unsigned char) {}

void SMBIOSTable::terminateGlobalTable() {}
