#pragma once

#include <nlohmann/json_fwd.hpp>

namespace host
{
/// What libblkid finds in an open block device or image; null when nothing can be read.
nlohmann::json probeBlockContent(int device);
} // namespace host
