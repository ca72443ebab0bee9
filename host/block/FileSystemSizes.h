#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/Collection.h"
#include "host/Kernel.h"

namespace host
{
/// A file system to ask for its size.
struct SizeQuestion {
    std::string mountPoint;
    bool isRemote; // may never answer: asked in a process of its own
};

/// Asks all file systems: the local ones here, each remote one in a process of its own, until shortly before the scan's
/// deadline. answer gets the question's number and the size; questions that nobody answered are noted.
void askSizes(const Machine& machine, const std::vector<SizeQuestion>& questions, Notes& notes,
              const std::function<void(size_t question, const FileSystemSize& size)>& answer);
} // namespace host
