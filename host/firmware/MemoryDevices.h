#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/firmware/StructureTable.h"

namespace host
{
/// A memory socket and the module in it (DSP0134, 7.18). What the firmware does not know is absent or empty.
struct MemoryDevice {
    std::optional<uint64_t> sizeMB; // 0: nothing is installed; absent: unknown
    std::optional<uint64_t> mostMB; // of one socket, by the capacity of its array
    std::string socket, bank, formFactor, type, typeDetail;
    std::string manufacturer, partNumber, serialNumber, assetTag;
    std::optional<uint64_t> speed, configuredSpeed; // MT/s
    std::optional<uint64_t> rank, dataWidth, totalWidth, configuredMillivolts;

    /// "Synchronous Registered DDR4".
    std::string typeWithDetail() const { return typeDetail + (typeDetail.empty() || type.empty() ? "" : " ") + type; }
};

/// Every memory device of a table, in its order.
std::vector<MemoryDevice> memoryDevicesOf(const StructureTable& table);

/// Where udev keeps what it read of the table for all users.
constexpr std::string_view kUdevMemoryPath = "/run/udev/data/+dmi:id";

/// The same from the lines of that file ("E:MEMORY_DEVICE_0_SIZE=17179869184").
std::vector<MemoryDevice> memoryDevicesOfUdev(std::string_view text);

/// What the arrays of system memory can take together (7.17).
struct MemoryLimits {
    uint64_t mostMB = 0;
    uint64_t sockets = 0;
};
MemoryLimits memoryLimitsOf(const StructureTable& table);
} // namespace host
