#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// OEM Strings. The table never makes this record.
class SMBIOSTable11Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    unsigned char getCount() const { return count_; }
    const char* getString(int i) const { return stringFromIndex(i); }

private:
    unsigned char count_ = 0;
};
