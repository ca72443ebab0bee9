#include "SMBIOS/SMBIOSTable5Data.h"

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.6. Those that nobody asks for are not kept.
int SMBIOSTable5Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    maximumMemoryModuleSize_ = IntelByteBuffer::readUCHAR(data, offset + 8);
    numAssocMemorySlots_ = IntelByteBuffer::readUCHAR(data, offset + 14);

    // No string-set is looked for: the next structure is where the next byte that is not 0 stands. The buffer ends with
    // one (TableBuffer).
    int next = offset + getLength();
    while (data[next] == 0)
        ++next;
    return next;
}

void SMBIOSTable5Data::dump() const {}
