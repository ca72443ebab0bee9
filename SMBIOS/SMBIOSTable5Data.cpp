#include "SMBIOS/SMBIOSTable5Data.h"

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.6.
int SMBIOSTable5Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    errorDetectingMethod_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    errorCorrectingCapability_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    supportedInterleave_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    currentInterleave_ = IntelByteBuffer::readUCHAR(data, offset + 7);
    maximumMemoryModuleSize_ = IntelByteBuffer::readUCHAR(data, offset + 8);
    supportedSpeeds_ = IntelByteBuffer::readUSHORT(data, offset + 9);
    supportedMemoryTypes_ = IntelByteBuffer::readUSHORT(data, offset + 11);
    memoryModuleVoltage_ = IntelByteBuffer::readUCHAR(data, offset + 13);
    numAssocMemorySlots_ = IntelByteBuffer::readUCHAR(data, offset + 14);

    // No string-set is looked for: the next structure is where the next byte that is not 0 stands. The buffer ends with
    // one (TableBuffer).
    int next = offset + getLength();
    while (data[next] == 0)
        ++next;
    return next;
}

void SMBIOSTable5Data::dump() const {}
