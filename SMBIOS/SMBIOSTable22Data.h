#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// Portable Battery.
class SMBIOSTable22Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getLocation() const { return stringFromIndex(location_); }
    const char* getManufacturer() const { return stringFromIndex(manufacturer_); }
    const char* getManufactureDate() const { return stringFromIndex(manufactureDate_); }
    const char* getSerialNumber() const { return stringFromIndex(serialNumber_); }
    const char* getDeviceName() const { return stringFromIndex(deviceName_); }

private:
    unsigned char location_ = 0;        // string number
    unsigned char manufacturer_ = 0;    // string number
    unsigned char manufactureDate_ = 0; // string number
    unsigned char serialNumber_ = 0;    // string number
    unsigned char deviceName_ = 0;      // string number
};
