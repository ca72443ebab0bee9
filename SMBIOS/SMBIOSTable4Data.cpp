#include "SMBIOS/SMBIOSTable4Data.h"

#include <cstdio>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"

// The fields: DSP0134, 7.5.
int SMBIOSTable4Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    socket_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    processorType_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    family_ = IntelByteBuffer::readUCHAR(data, offset + 6);
    manufacturer_ = IntelByteBuffer::readUCHAR(data, offset + 7);
    eax_ = IntelByteBuffer::readULONG(data, offset + 8);
    edx_ = IntelByteBuffer::readULONG(data, offset + 12);
    version_ = IntelByteBuffer::readUCHAR(data, offset + 16);
    voltage_ = IntelByteBuffer::readUCHAR(data, offset + 17);
    externalClock_ = IntelByteBuffer::readUSHORT(data, offset + 18);
    maxSpeed_ = IntelByteBuffer::readUSHORT(data, offset + 20);
    currentSpeed_ = IntelByteBuffer::readUSHORT(data, offset + 22);
    status_ = IntelByteBuffer::readUCHAR(data, offset + 24);
    upgrade_ = IntelByteBuffer::readUCHAR(data, offset + 25);
    if (isVersion23()) {
        serialNumber_ = IntelByteBuffer::readUCHAR(data, offset + 32);
        assetTag_ = IntelByteBuffer::readUCHAR(data, offset + 33);
    }
    return readStringsAfter(data, offset);
}

// DSP0134, 7.5.4: tenths of a volt behind a set highest bit, else a bit for each voltage that the socket can give.
double SMBIOSTable4Data::getVoltageInVolts() const
{
    if ((voltage_ & 0x80) != 0)
        return (voltage_ & 0x7F) * 0.1;
    if ((voltage_ & 1) != 0)
        return 5.0;
    if ((voltage_ & 2) != 0)
        return 3.3;
    return (voltage_ & 4) != 0 ? 2.9 : 0.0;
}

void SMBIOSTable4Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 4 Data - Processor Information");
    dumpString("Socket", getSocket());
    dumpByte("Type", processorType_);
    dumpByte("Family", family_);
    dumpString("Manufacturer", getManufacturer());
    printf("\n   CPUID             : x%08X:%08X (family %d model %d stepping %d)", eax_, edx_, getCPUIDFamily(),
           getCPUIDModel(), getCPUIDStepping());
    dumpString("Version", getVersion());
    printf("\n   Voltage           : x%02X (%.1f V)", voltage_, getVoltageInVolts());
    dumpWord("External Clock", externalClock_);
    dumpWord("Max Speed", maxSpeed_);
    dumpWord("Current Speed", currentSpeed_);
    dumpByte("Status", status_);
    dumpByte("Upgrade", upgrade_);
    dumpString("Serial Number", getSerialNumber());
    dumpString("Asset Tag", getAssetTag());
}
