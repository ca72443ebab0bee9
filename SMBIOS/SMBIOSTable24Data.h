#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// Hardware Security.
class SMBIOSTable24Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    /// The settings byte as a signed value: negative from 0x80 on.
    int getHWSecStatus() const { return hwSecStatus_; }

private:
    signed char hwSecStatus_ = 0;
};
