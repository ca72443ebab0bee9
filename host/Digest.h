#pragma once

#include <string>
#include <string_view>

#include "com/md5file.h"

namespace host
{
/// The MD5 digest of a text as 32 lower-case hexadecimal digits: the form of the catalog's ID attributes.
inline std::string md5(std::string_view text)
{
    md5file_context context;
    md5file_clear(&context);
    md5file_addn(&context, text.data(), text.size());
    char digest[33];
    md5file_sprint_hash(&context, digest);
    return digest;
}
} // namespace host
