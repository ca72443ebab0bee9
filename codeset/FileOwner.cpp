#include "codeset/FileOwner.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

FileOwner openRegularFile(const char* path)
{
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK); // does not wait for a pipe's writer
    if (descriptor == -1)
        return nullptr;
    struct stat status;
    FILE* const file = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? fdopen(descriptor, "r") : nullptr;
    if (file == nullptr)
        close(descriptor);
    return FileOwner(file);
}
