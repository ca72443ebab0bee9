#pragma once

#include <string_view>

#include "host/packages/Package.h"

namespace host
{
/// What a snap says of itself (meta/snap.yaml): its name, its version, the first architecture that it is for. Absent
/// when it has no name or version. Texts are views of the text.
std::optional<Package> parseSnapYaml(std::string_view text);
} // namespace host
