#include "SMBIOS/SMBIOSTable9Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.10.
int SMBIOSTable9Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    slotDesignation_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    slotType_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    slotDataBusWidth_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    currentUsage_ = IntelByteBuffer::readUCHAR(data, offset + 7);
    slotLength_ = IntelByteBuffer::readUCHAR(data, offset + 8);
    slotID_ = IntelByteBuffer::readUSHORT(data, offset + 9);
    slotCharacteristics1_ = IntelByteBuffer::readUCHAR(data, offset + 11);
    if (isVersion21())
        slotCharacteristics2_ = IntelByteBuffer::readUCHAR(data, offset + 12);
    return readStringsAfter(data, offset);
}

void SMBIOSTable9Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 9 Data - System Slots Information");
    dumpString("Designation", getSlotDesignation());
    dumpByte("Type", slotType_);
    dumpByte("Data Bus Width", slotDataBusWidth_);
    dumpByte("Current Usage", currentUsage_);
    dumpByte("Length", slotLength_);
    dumpWord("ID", slotID_);
    dumpByte("Characteristics 1", slotCharacteristics1_);
    dumpByte("Characteristics 2", slotCharacteristics2_);
}
