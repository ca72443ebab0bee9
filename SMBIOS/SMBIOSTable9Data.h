#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// System Slots.
class SMBIOSTable9Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getSlotDesignation() const { return stringFromIndex(slotDesignation_); }
    unsigned char getSlotType() const { return slotType_; }
    unsigned char getSlotDataBusWidth() const { return slotDataBusWidth_; }
    unsigned char getCurrentUsage() const { return currentUsage_; }
    unsigned char getSlotLength() const { return slotLength_; }
    unsigned short getSlotID() const { return slotID_; }
    unsigned char getSlotCharacteristics1() const { return slotCharacteristics1_; }
    /// 0 before version 2.1.
    unsigned char getSlotCharacteristics2() const { return slotCharacteristics2_; }

private:
    unsigned char slotDesignation_ = 0; // string number
    unsigned char slotType_ = 0;
    unsigned char slotDataBusWidth_ = 0;
    unsigned char currentUsage_ = 0;
    unsigned char slotLength_ = 0;
    unsigned short slotID_ = 0;
    unsigned char slotCharacteristics1_ = 0;
    unsigned char slotCharacteristics2_ = 0;
};
