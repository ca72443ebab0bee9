#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/Root.h"
#include "report/Text.h"

namespace host
{
/// The number in a file of a USB device's ids and classes: hexadecimal without 0x.
inline std::optional<uint64_t> usbNumber(const Root& root, const std::string& path)
{
    const std::optional<std::string> line = root.line(path);
    return line ? report::parseNumber(*line, 16) : std::nullopt;
}
} // namespace host
