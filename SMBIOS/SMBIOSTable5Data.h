#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// Memory Controller Information. Read without its strings: it has none.
class SMBIOSTable5Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    /// The exponent n of the largest module, 2^n MB, as stored.
    unsigned char getMaximumMemoryModuleSize() const { return maximumMemoryModuleSize_; }
    unsigned char getNumAssocMemorySlots() const { return numAssocMemorySlots_; }

private:
    unsigned char maximumMemoryModuleSize_ = 0;
    unsigned char numAssocMemorySlots_ = 0;
};
