#pragma once

#include <string>

/// A text of the firmware, cleaned by SMBIOSTable::validateString; empty for null.
std::string validatedText(const char* firmwareText);
