#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace fakemachine
{

/// What a machine says to one ioctl: an errno, numbers by name, bytes by offset, a text or a single number.
struct IoctlAnswer {
    int error = 0;
    std::map<std::string, uint64_t> numbers;
    std::map<size_t, std::string> bytes;
    std::string text;
    uint64_t value = 0;
};
using IoctlAnswers = std::map<std::string, IoctlAnswer>; // by the ioctl's name

/// Whether a device node's text may give an answer under this name.
bool isIoctlName(const std::string& name);

/// Writes the answer to the ioctl with this number; result and errno as of ioctl itself. ENOTTY when there is none.
int answerIoctl(const IoctlAnswers& answers, uint32_t request, void* argument);

} // namespace fakemachine
