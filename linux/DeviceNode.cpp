#include "linux/DeviceNode.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

DeviceNode::DeviceNode(const char* path, int flags) : descriptor_(open(path, flags)) {}

DeviceNode::~DeviceNode()
{
    if (descriptor_ >= 0)
        close(descriptor_);
}

int DeviceNode::control(unsigned long request, void* argument) const
{
    return ioctl(descriptor_, request, argument);
}

int DeviceNode::control(unsigned long request, int argument) const
{
    return ioctl(descriptor_, request, argument);
}
