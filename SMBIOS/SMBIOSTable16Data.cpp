#include "SMBIOS/SMBIOSTable16Data.h"

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.17. Those that nobody asks for are not kept.
int SMBIOSTable16Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    maxCapacity_ = IntelByteBuffer::readULONG(data, offset + 7);
    numMemDevices_ = IntelByteBuffer::readUSHORT(data, offset + 13);

    // No string-set is looked for: at least one byte on, the next structure is where the next byte that is not 0
    // stands. The buffer ends with one (TableBuffer).
    int next = offset + getLength() + 1;
    while (data[next] == 0)
        ++next;
    return next;
}

void SMBIOSTable16Data::dump() const {}
