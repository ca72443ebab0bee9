#pragma once

/// A device node that is open; closed with its scope.
class DeviceNode
{
public:
    /// flags as for open(); errno tells why the node is not open afterwards.
    DeviceNode(const char* path, int flags);
    /// Takes over an open descriptor.
    explicit DeviceNode(int descriptor) : descriptor_(descriptor) {}
    DeviceNode(const DeviceNode&) = delete;
    DeviceNode& operator=(const DeviceNode&) = delete;
    ~DeviceNode();

    /// Negative when the node could not be opened.
    int descriptor() const { return descriptor_; }
    /// ioctl() on the node: negative, with errno set, when it fails.
    int control(unsigned long request, void* argument) const;
    /// The same for a request that takes a number.
    int control(unsigned long request, int argument) const;

private:
    int descriptor_;
};
