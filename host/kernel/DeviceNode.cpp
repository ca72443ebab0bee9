#include "host/kernel/DeviceNode.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace host
{
static bool isCharacterDevice(const struct stat& status)
{
    return S_ISCHR(status.st_mode);
}

Descriptor openCharacterDevice(const std::string& path, int flags)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return Descriptor();
    Descriptor opened;
    if (isCharacterDevice(status))
        opened = Descriptor(open(path.c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    else
        errno = ENODEV;
    if (!opened.isOpen() || (fstat(opened.get(), &status) == 0 && isCharacterDevice(status)))
        return opened;
    errno = ENODEV;
    return Descriptor();
}
} // namespace host
