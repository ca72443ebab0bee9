#pragma once

#include <string>
#include <string_view>

namespace host
{
/// Any bytes as UTF-8, which JSON texts must be, and back. Valid UTF-8 stays as it is; every other byte becomes the
/// character U+F700 + byte of the private area, and so does every byte of such a character itself. What textOfBytes
/// made comes back byte for byte.
std::string textOfBytes(std::string_view bytes);
std::string bytesOfText(std::string_view text);
} // namespace host
