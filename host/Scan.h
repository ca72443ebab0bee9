#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "report/Report.h"

namespace host
{
/// What is scanned and how.
struct ScanOptions {
    std::string root = "/";       // of the live machine, or of a copy of one
    std::vector<uint32_t> groups; // ids; all when empty
    double deadlineSeconds = 5;   // from the scan's start

    /// Called now and then with the number of groups that are ready, and of all.
    std::function<void(size_t ready, size_t all)> onProgress;
};

/// Version of invhwctl, as reports name it.
extern const char* const kProgram;
extern const uint32_t kMajorVersion, kMinorVersion;

/// Collects the groups, each in a process of its own. Ends within the deadline and half a second, whatever the machine
/// does. The report holds every group that has rows, and Scan Status of all that were asked. Returns false, with the
/// reason, when the root cannot be used.
bool scan(const ScanOptions& options, report::Report& report, std::string& reason);
} // namespace host
