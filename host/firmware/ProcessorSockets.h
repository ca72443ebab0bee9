#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/firmware/StructureTable.h"

namespace host
{
/// A processor that the firmware names (DSP0134, 7.5). What it does not know is absent or empty.
struct ProcessorSocket {
    std::string socket, manufacturer, version, serialNumber;
    std::optional<uint64_t> family, upgrade;
    std::optional<uint64_t> externalClock, maximumSpeed, currentSpeed; // MHz
    std::optional<uint64_t> cores, threads;
};

/// The sockets that hold a central processor, in the table's order.
std::vector<ProcessorSocket> processorSocketsOf(const StructureTable& table);
} // namespace host
