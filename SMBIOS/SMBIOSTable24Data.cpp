#include "SMBIOS/SMBIOSTable24Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.25.
int SMBIOSTable24Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    hwSecStatus_ = static_cast<signed char>(IntelByteBuffer::readUCHAR(data, offset + 4));
    return readStringsAfter(data, offset);
}

void SMBIOSTable24Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 24 Data - Hardware Security Information");
    printf("\n   Settings          : x%02X", static_cast<unsigned>(hwSecStatus_) & 0xFF);
}
