#include "SMBIOS/SMBIOSTable22Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.23.
int SMBIOSTable22Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    location_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    manufacturer_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    manufactureDate_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    serialNumber_ = IntelByteBuffer::readUCHAR(data, offset + 7);
    deviceName_ = IntelByteBuffer::readUCHAR(data, offset + 8);
    return readStringsAfter(data, offset);
}

void SMBIOSTable22Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 22 Data - Portable Battery");
    dumpString("Location", getLocation());
    dumpString("Manufacturer", getManufacturer());
    dumpString("Manufacture Date", getManufactureDate());
    dumpString("Serial Number", getSerialNumber());
    dumpString("Device Name", getDeviceName());
}
