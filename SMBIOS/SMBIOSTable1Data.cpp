#include "SMBIOS/SMBIOSTable1Data.h"

#include <cstdio>
#include <cstring>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.2.
int SMBIOSTable1Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    manufacturer_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    product_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    version_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    serialNumber_ = IntelByteBuffer::readUCHAR(data, offset + 7);
    if (isVersion21()) {
        memcpy(uuid_, data + offset + 8, sizeof uuid_);
        wakeUpType_ = IntelByteBuffer::readUCHAR(data, offset + 24);
    }
    return readStringsAfter(data, offset);
}

const char* SMBIOSTable1Data::getUUIDAsString() const
{
    static char text[2 * sizeof uuid_ + 1];
    bool anySet = false;
    for (size_t i = 0; i < sizeof uuid_; ++i) {
        snprintf(text + 2 * i, 3, "%02X", uuid_[i]);
        anySet = anySet || uuid_[i] != 0;
    }
    return anySet ? text : nullptr;
}

void SMBIOSTable1Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 1 Data - System Information (ComponentID)");
    dumpString("Manufacturer", getManufacturer());
    dumpString("Product", getProduct());
    dumpString("Version", getVersion());
    dumpString("Serial Number", getSerialNumber());
    dumpString("UUID", getUUIDAsString());
    dumpByte("Wake-up Type", wakeUpType_);
}
