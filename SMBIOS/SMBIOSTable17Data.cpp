#include "SMBIOS/SMBIOSTable17Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.18.
int SMBIOSTable17Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    memoryArrayHandle_ = IntelByteBuffer::readUSHORT(data, offset + 4);
    memoryErrorHandle_ = IntelByteBuffer::readUSHORT(data, offset + 6);
    totalWidth_ = IntelByteBuffer::readUSHORT(data, offset + 8);
    dataWidth_ = IntelByteBuffer::readUSHORT(data, offset + 10);
    size_ = IntelByteBuffer::readUSHORT(data, offset + 12);
    formFactor_ = IntelByteBuffer::readUCHAR(data, offset + 14);
    deviceSet_ = IntelByteBuffer::readUCHAR(data, offset + 15);
    deviceLocator_ = IntelByteBuffer::readUCHAR(data, offset + 16);
    bankLocator_ = IntelByteBuffer::readUCHAR(data, offset + 17);
    memoryType_ = IntelByteBuffer::readUCHAR(data, offset + 18);
    typeDetail_ = IntelByteBuffer::readUSHORT(data, offset + 19);
    if (isVersion23()) {
        speed_ = IntelByteBuffer::readUSHORT(data, offset + 21);
        manufacturer_ = IntelByteBuffer::readUCHAR(data, offset + 23);
        serialNumber_ = IntelByteBuffer::readUCHAR(data, offset + 24);
        assetTag_ = IntelByteBuffer::readUCHAR(data, offset + 25);
        partNumber_ = IntelByteBuffer::readUCHAR(data, offset + 26);
    }
    return readStringsAfter(data, offset);
}

int SMBIOSTable17Data::getSizeKB() const
{
    if (size_ == 0xFFFF)
        return 0;
    const int value = size_ & 0x7FFF;
    return (size_ & 0x8000) != 0 ? value : value * 1024;
}

void SMBIOSTable17Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 17 Data - Memory Device Information");
    dumpWord("Array Handle", memoryArrayHandle_);
    dumpWord("Error Handle", memoryErrorHandle_);
    dumpWord("Total Width", totalWidth_);
    dumpWord("Data Width", dataWidth_);
    printf("\n   Size              : x%04X (%d KB)", size_, getSizeKB());
    dumpByte("Form Factor", formFactor_);
    dumpByte("Device Set", deviceSet_);
    dumpString("Device Locator", getDeviceLocator());
    dumpString("Bank Locator", getBankLocator());
    dumpByte("Memory Type", memoryType_);
    dumpWord("Type Detail", typeDetail_);
    dumpWord("Speed", speed_);
    dumpString("Manufacturer", getManufacturer());
    dumpString("Serial Number", getSerialNumber());
    dumpString("Asset Tag", getAssetTag());
    dumpString("Part Number", getPartNumber());
}
