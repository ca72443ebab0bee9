#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/Collection.h"
#include "host/Fact.h"
#include "host/Kernel.h"

// What all groups of block devices ask of one.

namespace host
{
constexpr uint64_t kSectorBytes = 512; // the kernel counts in these whatever the device's own are
constexpr uint64_t kSectorsPerMegabyte = 2048;

/// The path of a device's node: the kernel writes "!" for "/" in names of folders.
std::string nodeOf(std::string_view name);

/// "8:0" of a device's folder in /sys.
std::string numberOf(const Root& root, const std::string& folder);

/// What stands on a device: what udev found, else what its own blocks say where they may be read.
struct ContentFacts {
    MaybeFact type, uuid, label, partitionTable;
};
ContentFacts contentOf(const Machine& machine, const std::string& folder, const std::string& node);
} // namespace host
