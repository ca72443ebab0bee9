#include "linux/system/KernelVersion.h"

#include <cstring>

#include "linux/text/TextParse.h"

KernelVersion parseKernelRelease(const char* release)
{
    KernelVersion version;
    std::string tokens = release;
    char* rest = nullptr;
    if (const char* major = strtok_r(tokens.data(), ".", &rest); major != nullptr) {
        version.major = parseLong(major);
        if (const char* minor = strtok_r(nullptr, ".", &rest); minor != nullptr)
            version.minor = parseLong(minor);
    }
    const char* const firstDot = strchr(release, '.');
    const char* const secondDot = firstDot == nullptr ? nullptr : strchr(firstDot + 1, '.');
    if (secondDot != nullptr)
        version.sub = secondDot + 1;
    return version;
}
