#pragma once

#include <string>

// The machine-readable listing of PCI devices: one line a device, made of the slot, the quoted class, vendor and device
// names, options such as -r08 (the revision) or -p01, and the quoted names of the subsystem:
//
//   00:0d.0 "Ethernet controller" "Intel Corp." "82557 [Ethernet Pro 100]" -r08 "" ""

/// What one line says.
struct LspciDevice {
    std::string name;     // vendor and device
    std::string revision; // "0x08"; empty when the line has none
};

/// Reads one line, its newline included or not. False, with device untouched, when it lacks the vendor's or the
/// device's name.
bool parseLspciLine(const char* line, LspciDevice* device);
