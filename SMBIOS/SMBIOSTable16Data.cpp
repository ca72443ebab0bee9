#include "SMBIOS/SMBIOSTable16Data.h"

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.17.
int SMBIOSTable16Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    location_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    use_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    memoryErrorCorrection_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    maxCapacity_ = IntelByteBuffer::readULONG(data, offset + 7);
    memoryErrorHandle_ = IntelByteBuffer::readUSHORT(data, offset + 11);
    numMemDevices_ = IntelByteBuffer::readUSHORT(data, offset + 13);

    // No string-set is looked for: at least one byte on, the next structure is where the next byte that is not 0
    // stands. The buffer ends with one (TableBuffer).
    int next = offset + getLength() + 1;
    while (data[next] == 0)
        ++next;
    return next;
}

void SMBIOSTable16Data::dump() const {}
