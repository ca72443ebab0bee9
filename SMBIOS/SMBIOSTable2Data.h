#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// Base Board Information.
class SMBIOSTable2Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getManufacturer() const { return stringFromIndex(manufacturer_); }
    const char* getProduct() const { return stringFromIndex(product_); }
    const char* getVersion() const { return stringFromIndex(version_); }
    const char* getSerialNumber() const { return stringFromIndex(serialNumber_); }

private:
    unsigned char manufacturer_ = 0; // string number
    unsigned char product_ = 0;      // string number
    unsigned char version_ = 0;      // string number
    unsigned char serialNumber_ = 0; // string number
};
