#pragma once

#include <cstdint>
#include <string>

/// One logical drive of a DAC960 controller, as the driver's status file tells of it.
struct RAIDInfo {
    std::string controllerName; // empty when no controller line stood before the drive's
    std::string level;          // "RAID-5"
    std::string device;         // "/dev/rd/c0d0"
};
