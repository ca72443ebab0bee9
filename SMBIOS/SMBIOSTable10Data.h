#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// On Board Devices Information: the first device of the structure.
class SMBIOSTable10Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    unsigned char getDeviceType() const { return deviceType_; }
    int getDeviceTypeActual() const { return deviceType_ & 0x7F; }
    int isEnabled() const { return deviceType_ >> 7; }
    const char* getDescription() const { return stringFromIndex(description_); }

private:
    unsigned char deviceType_ = 0;
    unsigned char description_ = 0; // string number
};
