#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// Memory Device.
class SMBIOSTable17Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    unsigned short getMemoryArrayHandle() const { return memoryArrayHandle_; }
    unsigned short getMemoryErrorHandle() const { return memoryErrorHandle_; }
    unsigned short getTotalWidth() const { return totalWidth_; }
    unsigned short getDataWidth() const { return dataWidth_; }
    unsigned short getSize() const { return size_; }
    /// 0 for an empty socket and for an unknown size.
    int getSizeKB() const;
    unsigned char getFormFactor() const { return formFactor_; }
    unsigned char getDeviceSet() const { return deviceSet_; }
    const char* getDeviceLocator() const { return stringFromIndex(deviceLocator_); }
    const char* getBankLocator() const { return stringFromIndex(bankLocator_); }
    unsigned char getMemoryType() const { return memoryType_; }
    unsigned short getTypeDetail() const { return typeDetail_; }
    /// 0 before version 2.3; the strings after it are then null.
    unsigned short getSpeed() const { return speed_; }
    const char* getManufacturer() const { return stringFromIndex(manufacturer_); }
    const char* getSerialNumber() const { return stringFromIndex(serialNumber_); }
    const char* getAssetTag() const { return stringFromIndex(assetTag_); }
    const char* getPartNumber() const { return stringFromIndex(partNumber_); }

private:
    unsigned short memoryArrayHandle_ = 0;
    unsigned short memoryErrorHandle_ = 0;
    unsigned short totalWidth_ = 0; // bits
    unsigned short dataWidth_ = 0;  // bits
    unsigned short size_ = 0;       // MB, or KB with bit 15 set; 0xFFFF unknown
    unsigned char formFactor_ = 0;
    unsigned char deviceSet_ = 0;
    unsigned char deviceLocator_ = 0; // string number
    unsigned char bankLocator_ = 0;   // string number
    unsigned char memoryType_ = 0;
    unsigned short typeDetail_ = 0;  // bits
    unsigned short speed_ = 0;       // MHz
    unsigned char manufacturer_ = 0; // string number
    unsigned char serialNumber_ = 0; // string number
    unsigned char assetTag_ = 0;     // string number
    unsigned char partNumber_ = 0;   // string number
};
