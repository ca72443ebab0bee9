#pragma once

#include <cstdint>
#include <ctime>

#include "SMBIOS/SMBIOSTableData.h"

/// BIOS Information.
class SMBIOSTable0Data final : public SMBIOSTableData
{
public:
    using SMBIOSTableData::SMBIOSTableData;
    int readBlock(const unsigned char* data, int offset) override;
    void dump() const override;

    const char* getVendor() const { return stringFromIndex(vendor_); }
    const char* getVersion() const { return stringFromIndex(version_); }
    unsigned short getStartAddrSeg() const { return startAddrSeg_; }
    const char* getReleaseDate() const { return stringFromIndex(releaseDate_); }
    /// The release date as YYYY-MM-DD, or as the firmware has it when its form is unknown, in a text that the caller
    /// frees with free(); null when there is none.
    char* getReleaseDateAsYYYYMMDD() const;
    /// Local midnight of the release date; 0 when there is none.
    time_t getReleaseDateAsTimeT() const;
    int getROMSizeKB() const { return 64 * (romSize_ + 1); }
    /// The first word of the characteristics; the names of the two are swapped, as their callers know them.
    uint32_t getCharacteristicsHigh() const { return characteristicsHigh_; }
    uint32_t getCharacteristicsLow() const { return characteristicsLow_; }
    unsigned char getExtensionByte1() const { return extensionByte1_; }

    int isISASupported() const { return characteristic(4); }
    int isMCASupported() const { return characteristic(5); }
    int isEISASupported() const { return characteristic(6); }
    int isPCISupported() const { return characteristic(7); }
    int isPCMCIASupported() const { return characteristic(8); }
    int isPnPSupported() const { return characteristic(9); }
    int isAPMSupported() const { return characteristic(10); }
    int isFlashableBIOS() const { return characteristic(11); }
    int isBIOSShadowing() const { return characteristic(12); }
    int isVLVESASupported() const { return characteristic(13); }
    int isESCDSupported() const { return characteristic(14); }
    int isCDBootSupported() const { return characteristic(15); }
    int isSelectableBoot() const { return characteristic(16); }
    int isBIOSROMSocketed() const { return characteristic(17); }
    int isPCCardBootable() const { return characteristic(18); }
    int isEnhancedDiskDrive() const { return characteristic(19); }
    int isACPISupported() const { return extension(0); }
    int isUSBLegacySupported() const { return extension(1); }
    int isAGPSupported() const { return extension(2); }
    int isI2OBootSupported() const { return extension(3); }
    int isLS120BootSupported() const { return extension(4); }
    int isATAPIZipBootSupported() const { return extension(5); }
    int is1394BootSupported() const { return extension(6); }
    int isSmartBatteryBIOS() const { return extension(7); }

private:
    int characteristic(int bit) const { return static_cast<int>(characteristicsHigh_ >> bit & 1); }
    int extension(int bit) const { return extensionByte1_ >> bit & 1; }
    void dumpCharacteristics() const;

    unsigned char vendor_ = 0;  // string number
    unsigned char version_ = 0; // string number
    unsigned short startAddrSeg_ = 0;
    unsigned char releaseDate_ = 0;    // string number
    unsigned char romSize_ = 0;        // 64 KB blocks less one
    uint32_t characteristicsHigh_ = 0; // bits 0-31
    uint32_t characteristicsLow_ = 0;  // bits 32-63
    unsigned char extensionByte1_ = 0;
};
