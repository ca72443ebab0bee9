#include "SMBIOS/SMBIOSTable2Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.3.
int SMBIOSTable2Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    manufacturer_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    product_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    version_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    serialNumber_ = IntelByteBuffer::readUCHAR(data, offset + 7);
    return readStringsAfter(data, offset);
}

void SMBIOSTable2Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 2 Data - Base Board Information (Motherboard)");
    dumpString("Manufacturer", getManufacturer());
    dumpString("Product", getProduct());
    dumpString("Version", getVersion());
    dumpString("Serial Number", getSerialNumber());
}
