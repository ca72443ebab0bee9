#pragma once

#include <cstdint>

#include "SMBIOS/SMBIOSTableData.h"

/// Processor Information.
class SMBIOSTable4Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getSocket() const { return stringFromIndex(socket_); }
    /// 3 is a central processor.
    unsigned char getType() const { return processorType_; }
    unsigned char getFamily() const { return family_; }
    const char* getManufacturer() const { return stringFromIndex(manufacturer_); }
    /// The CPUID signature.
    uint32_t getEAX() const { return eax_; }
    int getCPUIDFamily() const { return static_cast<int>((eax_ & 0xF00) >> 8); }
    int getCPUIDModel() const { return static_cast<int>((eax_ & 0xF0) >> 4); }
    int getCPUIDStepping() const { return static_cast<int>(eax_ & 0x0F); }
    /// The CPUID feature flags.
    uint32_t getEDX() const { return edx_; }
    const char* getVersion() const { return stringFromIndex(version_); }
    unsigned char getVoltage() const { return voltage_; }
    double getVoltageInVolts() const;
    unsigned short getExternalClock() const { return externalClock_; }
    unsigned short getMaxSpeed() const { return maxSpeed_; }
    unsigned short getCurrentSpeed() const { return currentSpeed_; }
    unsigned char getStatus() const { return status_; }
    /// 1 when a processor sits in the socket.
    int isPopulated() const { return status_ >> 6 & 1; }
    unsigned char getUpgrade() const { return upgrade_; }
    /// Null before version 2.3, like the asset tag.
    const char* getSerialNumber() const { return stringFromIndex(serialNumber_); }
    const char* getAssetTag() const { return stringFromIndex(assetTag_); }

private:
    unsigned char socket_ = 0; // string number
    unsigned char processorType_ = 0;
    unsigned char family_ = 0;
    unsigned char manufacturer_ = 0; // string number
    uint32_t eax_ = 0;
    uint32_t edx_ = 0;
    unsigned char version_ = 0; // string number
    unsigned char voltage_ = 0;
    unsigned short externalClock_ = 0; // MHz
    unsigned short maxSpeed_ = 0;      // MHz
    unsigned short currentSpeed_ = 0;  // MHz
    unsigned char status_ = 0;
    unsigned char upgrade_ = 0;
    unsigned char serialNumber_ = 0; // string number
    unsigned char assetTag_ = 0;     // string number
};
