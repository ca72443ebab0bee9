#pragma once

#include <cstddef>

// Names for PCI devices that the kernel lists by number only.

/// Names a device from the built-in tables: vendor with chip name and description, or with classText when the device is
/// unknown; "(classText)" for an unknown vendor, and the empty text when there is no classText either. Returns a text
/// of at most 179 characters that the caller frees with free(); null only when memory is short.
char* lookupPCI(unsigned long vendorId, unsigned long deviceId, const char* classText);

/// Names the device of a line that holds "PCI device VVVV:DDDD" (hexadecimal ids): writes lookupPCI's name without a
/// class text into out, cut to size - 1 characters. Any other line gives the empty text.
void processSuSEline(const char* line, char* out, size_t size);
