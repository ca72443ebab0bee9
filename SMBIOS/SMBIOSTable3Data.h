#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// System Enclosure.
class SMBIOSTable3Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getManufacturer() const { return stringFromIndex(manufacturer_); }
    /// The type with its lock bit (0x80) as stored.
    unsigned char getType() const { return enclosureType_; }
    const char* getVersion() const { return stringFromIndex(version_); }
    const char* getSerialNumber() const { return stringFromIndex(serialNumber_); }
    const char* getAssetTag() const { return stringFromIndex(assetTag_); }

private:
    unsigned char manufacturer_ = 0; // string number
    unsigned char enclosureType_ = 0;
    unsigned char version_ = 0;      // string number
    unsigned char serialNumber_ = 0; // string number
    unsigned char assetTag_ = 0;     // string number
};
