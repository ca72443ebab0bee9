#pragma once

#include <cstdint>

// The kernel's text listing of PCI devices, /proc/pci. An entry has two or three lines:
//
//   Bus  0, device   7, function  1:
//     IDE interface: Intel Corporation 82371AB PIIX4 IDE (rev 1).
//
// and, when the kernel's own name table lacks the device, "Unknown" names and a line with the numbers
//
//     Ethernet controller: Unknown vendor Unknown device (rev 8).
//       Vendor id=8086. Device id=1229.
//
// Kernels without a name table write "Class 0200: PCI device 8086:1229 (rev 8)." instead.

/// What one entry says.
struct ProcPciDevice {
    char name[512];
    char revision[5]; // "0x" and two digits
};

/// Reads the lines of /proc/pci one by one.
class ProcPciParser
{
public:
    /// Takes the next line, without its line end; the line is changed. True when it completes an entry that is to be
    /// reported: device() then describes it until the next call. Further functions of one device are no entries of
    /// their own while they have its name.
    bool takeLine(char* line);
    const ProcPciDevice& device() const { return device_; }

private:
    enum class State { BusLine, DescriptionLine, IdLine };

    void takeBusLine(const char* line);
    bool takeDescriptionLine(char* line);
    void takeRevision(char* description);
    bool takeIdLine(const char* line);
    bool finishEntry();

    State state_ = State::BusLine;
    int32_t busNumber_ = 0;
    int32_t deviceNumber_ = 0;
    ProcPciDevice device_ = {}; // its name holds the class text while the ids are awaited
    char lastName_[sizeof device_.name] = "";
    int32_t lastBusNumber_ = 0;
    int32_t lastDeviceNumber_ = 0;
};
