#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// Memory Module Information.
class SMBIOSTable6Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getSocketDesignation() const { return stringFromIndex(socketDesignation_); }
    unsigned char getBankConnections() const { return bankConnections_; }
    unsigned char getCurrentSpeed() const { return currentSpeed_; }
    unsigned short getMemoryType() const { return memoryType_; }
    unsigned char getInstalledSize() const { return installedSize_; }
    /// -1 when no size is known or nothing is installed.
    int getInstalledSizeMB() const { return sizeMB(installedSize_); }
    unsigned char getEnabledSize() const { return enabledSize_; }
    int getEnabledSizeMB() const { return sizeMB(enabledSize_); }
    unsigned char getErrorStatus() const { return errorStatus_; }

private:
    static int sizeMB(unsigned char size);

    unsigned char socketDesignation_ = 0; // string number
    unsigned char bankConnections_ = 0;
    unsigned char currentSpeed_ = 0;  // ns
    unsigned short memoryType_ = 0;   // bits
    unsigned char installedSize_ = 0; // exponent, 0x80 = double-bank
    unsigned char enabledSize_ = 0;
    unsigned char errorStatus_ = 0;
};
