#pragma once

#include <string_view>

#include "host/packages/Package.h"

// pacman's database.

namespace host
{
/// A package's description (/var/lib/pacman/local/NAME-VERSION/desc); absent when it names none. Its texts are views of
/// the text.
std::optional<Package> parsePacmanDescription(std::string_view text);
} // namespace host
