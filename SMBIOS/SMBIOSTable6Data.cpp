#include "SMBIOS/SMBIOSTable6Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.7.
int SMBIOSTable6Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    socketDesignation_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    bankConnections_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    currentSpeed_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    memoryType_ = IntelByteBuffer::readUSHORT(data, offset + 7);
    installedSize_ = IntelByteBuffer::readUCHAR(data, offset + 9);
    enabledSize_ = IntelByteBuffer::readUCHAR(data, offset + 10);
    errorStatus_ = IntelByteBuffer::readUCHAR(data, offset + 11);
    return readStringsAfter(data, offset);
}

int SMBIOSTable6Data::sizeMB(unsigned char size)
{
    const int exponent = size & 0x7F; // of 2; the highest bit tells of a double-bank connection
    if (exponent >= 125)              // not determinable, nothing enabled, nothing installed
        return -1;
    return exponent < 32 ? static_cast<int>(1U << exponent) : 0;
}

void SMBIOSTable6Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 6 Data - Memory Module Information");
    dumpString("Socket", getSocketDesignation());
    dumpByte("Bank Connections", bankConnections_);
    dumpByte("Current Speed", currentSpeed_);
    dumpWord("Memory Type", memoryType_);
    printf("\n   Installed Size    : x%02X (%d MB)", installedSize_, getInstalledSizeMB());
    printf("\n   Enabled Size      : x%02X (%d MB)", enabledSize_, getEnabledSizeMB());
    dumpByte("Error Status", errorStatus_);
}
