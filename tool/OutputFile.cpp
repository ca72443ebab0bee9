#include "tool/OutputFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ext/stdio_filebuf.h>
#include <fcntl.h>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

namespace tool
{
namespace
{
bool writeStandardOutput(const std::function<void(std::ostream&)>& write, std::string& reason)
{
    errno = 0;
    write(std::cout);
    std::cout.flush();
    if (std::cout.good())
        return true;
    reason = std::string("standard output: ") + (errno != 0 ? strerror(errno) : "cannot be written");
    return false;
}

// Writes through a descriptor, which stays open; a file down to its disk.
bool writeDescriptor(int descriptor, const std::function<void(std::ostream&)>& write, bool toDisk)
{
    errno = 0;
    __gnu_cxx::stdio_filebuf<char> buffer(dup(descriptor), std::ios::out | std::ios::binary);
    std::ostream out(&buffer);
    write(out);
    out.flush();
    return out.good() && (!toDisk || fsync(descriptor) == 0);
}

// Makes the renaming last: the folder's entry too. A file system that cannot sync folders has done what it can.
void syncFolderOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor == -1)
        return;
    fsync(descriptor);
    close(descriptor);
}

// A device, pipe or terminal is written to: nothing may be renamed onto it.
bool isSpecialFile(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

bool writeSpecialFile(const std::string& path, const std::function<void(std::ostream&)>& write, std::string& reason)
{
    const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    const bool written = descriptor != -1 && writeDescriptor(descriptor, write, false);
    if (!written)
        reason = path + ": " + strerror(errno != 0 ? errno : EIO);
    if (descriptor != -1)
        close(descriptor);
    return written;
}
} // namespace

bool writeOutput(const std::string& path, const std::function<void(std::ostream&)>& write, std::string& reason)
{
    if (path == "-")
        return writeStandardOutput(write, reason);
    if (isSpecialFile(path))
        return writeSpecialFile(path, write, reason);
    std::string temporary = path + ".XXXXXX";
    const int descriptor = mkostemp(temporary.data(), O_CLOEXEC); // mode 0600: a report holds serial numbers
    if (descriptor == -1) {
        reason = path + ": " + strerror(errno);
        return false;
    }
    const bool written = writeDescriptor(descriptor, write, true) && rename(temporary.c_str(), path.c_str()) == 0;
    const int error = errno != 0 ? errno : EIO;
    close(descriptor);
    if (written) {
        syncFolderOf(path);
        return true;
    }
    unlink(temporary.c_str());
    reason = path + ": " + strerror(error);
    return false;
}
} // namespace tool
