#pragma once

#include <optional>
#include <string>

#include "host/Fact.h"
#include "host/block/AtaIdentify.h"

namespace host
{
class Root;

/// Where a disk sits, from the path of its device below /sys/devices.
struct DiskBus {
    std::string device;    // real path of its device; empty for a disk without one
    const char* transport; // a word of Storage's Transport
    std::string address;   // PCI, virtio, SCSI, MMC ... as the kernel names it
    MaybeFact driver;      // of the controller
    std::string usbDevice; // real path of the USB device above it, or empty
    std::optional<AtaIdentify> identify;
    std::string identifyPath;
};

/// folder is the disk's own in /sys ("/sys/block/sda").
DiskBus readDiskBus(const Root& root, const std::string& folder);
} // namespace host
