#include "SMBIOS/SMBIOSTable10Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.11.
int SMBIOSTable10Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    deviceType_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    description_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    return readStringsAfter(data, offset);
}

void SMBIOSTable10Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 10 Data - On Board Devices Information");
    dumpByte("Device Type", deviceType_);
    printf("\n   Enabled           : %s", isEnabled() != 0 ? "Yes" : "No");
    dumpString("Description", getDescription());
}
