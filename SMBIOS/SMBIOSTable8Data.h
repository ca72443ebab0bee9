#pragma once

#include "SMBIOS/SMBIOSTableData.h"

/// Port Connector Information.
class SMBIOSTable8Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getInternalDesignator() const { return stringFromIndex(internalDesignator_); }
    unsigned char getInternalConnectorType() const { return internalConnectorType_; }
    const char* getExternalDesignator() const { return stringFromIndex(externalDesignator_); }
    unsigned char getExternalConnectorType() const { return externalConnectorType_; }
    unsigned char getPortType() const { return portType_; }

private:
    unsigned char internalDesignator_ = 0; // string number
    unsigned char internalConnectorType_ = 0;
    unsigned char externalDesignator_ = 0; // string number
    unsigned char externalConnectorType_ = 0;
    unsigned char portType_ = 0;
};
