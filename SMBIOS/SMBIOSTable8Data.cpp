#include "SMBIOS/SMBIOSTable8Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.9.
int SMBIOSTable8Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    internalDesignator_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    internalConnectorType_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    externalDesignator_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    externalConnectorType_ = IntelByteBuffer::readUCHAR(data, offset + 7);
    portType_ = IntelByteBuffer::readUCHAR(data, offset + 8);
    return readStringsAfter(data, offset);
}

void SMBIOSTable8Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 8 Data - Port Connector Information");
    dumpString("Internal Name", getInternalDesignator());
    dumpByte("Internal Type", internalConnectorType_);
    dumpString("External Name", getExternalDesignator());
    dumpByte("External Type", externalConnectorType_);
    dumpByte("Port Type", portType_);
}
