#include "SMBIOS/SMBIOSTable3Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.4.
int SMBIOSTable3Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    manufacturer_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    enclosureType_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    version_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    serialNumber_ = IntelByteBuffer::readUCHAR(data, offset + 7);
    assetTag_ = IntelByteBuffer::readUCHAR(data, offset + 8);
    return readStringsAfter(data, offset);
}

void SMBIOSTable3Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 3 Data - System Enclosure Information (Chassis)");
    dumpString("Manufacturer", getManufacturer());
    dumpByte("Type", enclosureType_);
    dumpString("Version", getVersion());
    dumpString("Serial Number", getSerialNumber());
    dumpString("Asset Tag", getAssetTag());
}
