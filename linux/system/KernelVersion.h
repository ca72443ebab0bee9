#pragma once

#include <cstdint>
#include <string>

/// A kernel release such as "2.4.21-4.ELsmp", taken apart.
struct KernelVersion {
    int32_t major = 0;
    int32_t minor = 0;
    std::string sub; // all that follows the second ".": "21-4.ELsmp"
};

/// Takes a release apart. A number that is missing is 0; with fewer than two dots the sub version is empty.
KernelVersion parseKernelRelease(const char* release);
