#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// System Information.
class SMBIOSTable1Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getManufacturer() const { return stringFromIndex(manufacturer_); }
    const char* getProduct() const { return stringFromIndex(product_); }
    const char* getVersion() const { return stringFromIndex(version_); }
    const char* getSerialNumber() const { return stringFromIndex(serialNumber_); }
    /// The UUID's bytes in stored order as 32 upper-case hexadecimal digits, in one buffer that all calls share; null
    /// when all are 0, as before version 2.1.
    const char* getUUIDAsString() const;
    unsigned char getWakeUpType() const { return wakeUpType_; }

private:
    unsigned char manufacturer_ = 0; // string number
    unsigned char product_ = 0;      // string number
    unsigned char version_ = 0;      // string number
    unsigned char serialNumber_ = 0; // string number
    unsigned char uuid_[16] = {};
    unsigned char wakeUpType_ = 0;
};
