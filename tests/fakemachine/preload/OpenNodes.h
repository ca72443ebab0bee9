#pragma once

#include <cstdint>
#include <memory>
#include <sys/types.h>

#include "preload/Machine.h"

// What stands behind the descriptors that the program holds: device nodes, physical memory, sockets. Each occupies a
// real descriptor (of /dev/null), so that numbers are those that a real computer gives.

namespace fakemachine
{

struct OpenNode {
    enum class Kind { Device, Memory, Socket };
    Kind kind = Kind::Device;
    std::unique_ptr<DeviceNode> device;
    uint64_t position = 0;
};

/// Opens a node under a new descriptor; -1 with errno.
int openNode(const Location& where, int flags);
int openSocketNode();
/// The node behind a descriptor, or null.
OpenNode* nodeOf(int descriptor);
void forgetNode(int descriptor);

/// read and lseek on memory; offset and results as of those calls.
ssize_t readNode(OpenNode& node, void* buffer, size_t count);
int64_t seekNode(OpenNode& node, int64_t offset, int whence);

} // namespace fakemachine
