#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/Root.h"

namespace host
{
/// One processor package, from /sys/devices/system/cpu and /sys/devices/system/node.
struct Package {
    std::vector<uint32_t> online;  // logical processors, ascending
    std::vector<uint32_t> offline; // those off line that belong to it by their node
    std::set<std::string> cores;   // lists of the threads of each core
    std::set<uint32_t> nodes;
};

/// The packages by their number; a machine whose kernel tells no topology has one, 0, of all processors that are on
/// line.
std::map<uint32_t, Package> readPackages(const Root& root);

/// Sums of a package's caches in kB by level and kind; 0 where the kernel tells none.
struct CacheSizes {
    uint64_t l1d = 0, l1i = 0, l2 = 0, l3 = 0;
    uint64_t largest = 0; // of one cache, whatever its level
};
CacheSizes readCaches(const Root& root, const Package& package);

/// "/sys/devices/system/cpu/cpu7/" and a name in it.
std::string processorPath(uint32_t processor, std::string_view name);
} // namespace host
