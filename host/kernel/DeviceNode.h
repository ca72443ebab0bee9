#pragma once

#include <string>

#include "host/Descriptor.h"

namespace host
{
/// Opens a character device without waiting for it. What has another kind is not opened, because that alone may change
/// something: then, and when it cannot be opened, the descriptor is none and errno says why.
Descriptor openCharacterDevice(const std::string& path, int flags);
} // namespace host
