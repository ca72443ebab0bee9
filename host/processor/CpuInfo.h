#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace host
{
/// One processor's lines of /proc/cpuinfo. The views are of the file's text.
using CpuInfo = std::map<std::string_view, std::string_view>;

/// Takes /proc/cpuinfo apart: for every processor its number and lines, in the file's order. Lines that belong to no
/// processor (a heading, a board's name) come as those of the processor behind or before them.
void forEachProcessor(std::string_view text, const std::function<void(uint32_t number, const CpuInfo& lines)>& take);

/// The bits of CPUID leaf 1, register EDX, from a line of flags; absent when the line is empty.
std::optional<uint32_t> featureBits(std::string_view flags);

/// Who a number of ARM's list of implementers ("0x41") is; null when it is not known.
const char* implementerName(std::string_view number);

/// The longest /proc/cpuinfo that is read: 8192 processors and more.
constexpr size_t kMostCpuinfo = size_t{32} << 20;
constexpr std::string_view kCpuinfoPath = "/proc/cpuinfo";
} // namespace host
