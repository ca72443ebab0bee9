#pragma once

#include <array>
#include <cstdint>

#include <nlohmann/json_fwd.hpp>

namespace host
{
/// The log of an NVMe controller that tells how it is (NVM Express Base Specification 2.0, 5.16.1.3).
using NvmeHealthLog = std::array<uint8_t, 512>;

/// What the log says, in the form of an answer: {"criticalWarning": 0, "temperature": 311, ...}. Numbers of the log
/// that do not fit 64 bits are the largest that does.
nlohmann::json parseNvmeHealth(const NvmeHealthLog& log);
} // namespace host
