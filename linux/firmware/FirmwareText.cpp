#include "linux/firmware/FirmwareText.h"

#include <cstring>

#include "SMBIOS/SMBIOSTable.h"

std::string validatedText(const char* firmwareText)
{
    std::string text(firmwareText == nullptr ? 0 : strlen(firmwareText), '\0');
    SMBIOSTable::validateString(firmwareText, text.data());
    text.resize(strlen(text.c_str()));
    return text;
}
