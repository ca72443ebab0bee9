#include "host/record/ErrorNames.h"

#include <cstring>

namespace host
{
static constexpr int kLastError = 1200; // some architectures count beyond a thousand

std::string errorName(int error)
{
    const char* name = strerrorname_np(error);
    return name != nullptr && error > 0 ? name : "EIO";
}

std::optional<int> errorNumber(std::string_view name)
{
    for (int error = 1; error <= kLastError; ++error) {
        const char* known = strerrorname_np(error);
        if (known != nullptr && name == known)
            return error;
    }
    return std::nullopt;
}
} // namespace host
