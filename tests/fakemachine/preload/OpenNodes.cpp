#include "preload/OpenNodes.h"

#include <cerrno>
#include <fcntl.h>
#include <map>
#include <unistd.h>

#include "preload/Calls.h"

namespace fakemachine
{

static std::map<int, OpenNode>& nodes()
{
    static auto* const open = new std::map<int, OpenNode>;
    return *open;
}

static int placeholder(int flags)
{
    static auto* const realOpen = realFunction<int(const char*, int, ...)>("open64");
    return realOpen("/dev/null", O_RDWR | (flags & O_CLOEXEC));
}

int openNode(const Location& where, int flags)
{
    OpenNode node;
    if (where.place == Place::Memory) {
        node.kind = OpenNode::Kind::Memory;
    } else {
        node.device = std::make_unique<DeviceNode>(Machine::instance().device(where));
        if (const int error = node.device->openError(flags); error != 0) {
            errno = error;
            return -1;
        }
    }
    const int descriptor = placeholder(flags);
    if (descriptor >= 0)
        nodes()[descriptor] = std::move(node);
    return descriptor;
}

int openSocketNode()
{
    const int descriptor = placeholder(0);
    if (descriptor >= 0)
        nodes()[descriptor].kind = OpenNode::Kind::Socket;
    return descriptor;
}

OpenNode* nodeOf(int descriptor)
{
    const auto found = nodes().find(descriptor);
    return found == nodes().end() ? nullptr : &found->second;
}

void forgetNode(int descriptor)
{
    nodes().erase(descriptor);
}

ssize_t readNode(OpenNode& node, void* buffer, size_t count)
{
    if (node.kind == OpenNode::Kind::Socket) {
        errno = ENOTCONN;
        return -1;
    }
    if (node.kind == OpenNode::Kind::Device)
        return node.device->readReply(buffer, count);
    const size_t copied = Machine::instance().memory().read(node.position, buffer, count);
    if (copied == 0 && count != 0) {
        errno = EFAULT;
        return -1;
    }
    node.position += copied;
    return static_cast<ssize_t>(copied);
}

int64_t seekNode(OpenNode& node, int64_t offset, int whence)
{
    if (node.kind != OpenNode::Kind::Memory || whence == SEEK_END) {
        errno = node.kind == OpenNode::Kind::Memory ? EINVAL : ESPIPE;
        return -1;
    }
    node.position = static_cast<uint64_t>(offset) + (whence == SEEK_CUR ? node.position : 0);
    return static_cast<int64_t>(node.position);
}

} // namespace fakemachine
