#include "SMBIOS/SMBIOSTable11Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.12.
int SMBIOSTable11Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    count_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    return readStringsAfter(data, offset);
}

void SMBIOSTable11Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 11 Data - OEM Strings Information");
    dumpByte("Count", count_);
    for (int i = 1; i <= count_ && getString(i) != nullptr; ++i)
        dumpString("String", getString(i));
}
