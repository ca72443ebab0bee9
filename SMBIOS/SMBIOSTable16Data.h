#pragma once

#include <cstdint>

#include "SMBIOS/SMBIOSTableData.h"

/// Physical Memory Array. Read without its strings: it has none.
class SMBIOSTable16Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    /// KB.
    uint32_t getMaxCapacity() const { return maxCapacity_; }
    unsigned short getNumMemDevices() const { return numMemDevices_; }

private:
    uint32_t maxCapacity_ = 0; // KB
    unsigned short numMemDevices_ = 0;
};
