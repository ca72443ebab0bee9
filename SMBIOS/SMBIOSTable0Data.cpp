#include "SMBIOS/SMBIOSTable0Data.h"

#include <cstdio>
#include <cstring>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/RecordDump.h"
#include "com/Owned.h"

namespace
{

// Day of a form whose text is "YYYY-MM-DD".
void setDate(char* date, const char* year, const char* month, const char* day)
{
    memcpy(date + 2, year, 2);
    memcpy(date + 5, month, 2);
    memcpy(date + 8, day, 2);
}

} // namespace

// The fields: DSP0134, 7.1.
int SMBIOSTable0Data::readBlock(const unsigned char* data, int offset)
{
    SMBIOSTableData::readBlock(data, offset);
    vendor_ = IntelByteBuffer::readUCHAR(data, offset + 4);
    version_ = IntelByteBuffer::readUCHAR(data, offset + 5);
    startAddrSeg_ = IntelByteBuffer::readUSHORT(data, offset + 6);
    releaseDate_ = IntelByteBuffer::readUCHAR(data, offset + 8);
    romSize_ = IntelByteBuffer::readUCHAR(data, offset + 9);
    characteristicsHigh_ = IntelByteBuffer::readULONG(data, offset + 10);
    characteristicsLow_ = IntelByteBuffer::readULONG(data, offset + 14);
    extensionByte1_ = IntelByteBuffer::readUCHAR(data, offset + 18);
    return readStringsAfter(data, offset);
}

char* SMBIOSTable0Data::getReleaseDateAsYYYYMMDD() const
{
    const char* const released = getReleaseDate();
    if (released == nullptr)
        return nullptr;
    char text[16];
    snprintf(text, sizeof text, "%s", released);
    text[strcspn(text, " ")] = '\0';

    char date[] = "1900-MM-DD";
    switch (strlen(text)) {
    case 8:
        if (text[7] == '.') { // YY/MM/D.
            const char day[] = {'0', text[6]};
            setDate(date, text, text + 3, day);
        } else { // MM/DD/YY: the century turns at 10, not at the usual pivot
            setDate(date, text + 6, text, text + 3);
            if (text[6] == '0') {
                date[0] = '2';
                date[1] = '0';
            }
        }
        return strdup(date);
    case 10: // MM/DD/YYYY
        setDate(date, text + 8, text, text + 3);
        memcpy(date, text + 6, 2);
        return strdup(date);
    default:
        return strdup(text);
    }
}

time_t SMBIOSTable0Data::getReleaseDateAsTimeT() const
{
    const OwnedText released(getReleaseDateAsYYYYMMDD());
    if (released == nullptr)
        return 0;
    char date[16] = ""; // zeros behind a shorter text
    snprintf(date, sizeof date, "%s", released.get());
    const auto digit = [&date](int i) { return date[i] - '0'; };
    tm day{};
    day.tm_year = digit(0) * 1000 + digit(1) * 100 + digit(2) * 10 + digit(3) - 1900;
    day.tm_mon = digit(5) * 10 + digit(6) - 1;
    day.tm_mday = digit(8) * 10 + digit(9);
    return mktime(&day);
}

void SMBIOSTable0Data::dumpCharacteristics() const
{
    const struct {
        const char* name;
        int value;
    } flags[] = {
        {"isISASupported", isISASupported()},
        {"isMCASupported", isMCASupported()},
        {"isEISASupported", isEISASupported()},
        {"isPCISupported", isPCISupported()},
        {"isPCMCIASupported", isPCMCIASupported()},
        {"isPnPSupported", isPnPSupported()},
        {"isAPMSupported", isAPMSupported()},
        {"isFlashableBIOS", isFlashableBIOS()},
        {"isBIOSShadowing", isBIOSShadowing()},
        {"isVLVESASupported", isVLVESASupported()},
        {"isESCDSupported", isESCDSupported()},
        {"isCDBootSupported", isCDBootSupported()},
        {"isSelectableBoot", isSelectableBoot()},
        {"isBIOSROMSocketed", isBIOSROMSocketed()},
        {"isPCCardBootable", isPCCardBootable()},
        {"isEnhancedDiskDrive", isEnhancedDiskDrive()},
        {"isACPISupported", isACPISupported()},
        {"isUSBLegacySupported", isUSBLegacySupported()},
        {"isAGPSupported", isAGPSupported()},
        {"isI2OBootSupported", isI2OBootSupported()},
        {"isLS120BootSupported", isLS120BootSupported()},
        {"isATAPIZipBootSupported", isATAPIZipBootSupported()},
        {"is1394BootSupported", is1394BootSupported()},
        {"isSmartBatteryBIOS", isSmartBatteryBIOS()},
    };
    for (const auto& flag : flags)
        printf("\n      %-24s: %s", flag.name, flag.value != 0 ? "Yes" : "No");
}

void SMBIOSTable0Data::dump() const
{
    SMBIOSTableData::dump();
    printf("\nSMBIOS Table 0 Data - BIOS Information");
    dumpString("Vendor", getVendor());
    dumpString("Version", getVersion());
    dumpWord("StartAddrSeg", startAddrSeg_);
    dumpString("ReleaseDate", getReleaseDate());
    printf("\n   ROMSize           : %dKb", getROMSizeKB());
    printf("\n   Characteristics   : x%08X:%08X", characteristicsHigh_, characteristicsLow_);
    dumpByte("ExtensionByte1", extensionByte1_);
    dumpCharacteristics();
}
