#include "tool/KeyFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <openssl/rand.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/Descriptor.h"

namespace tool
{
namespace
{
constexpr size_t kNewKey = 32, kShortestKey = 16, kLongestKey = 4096; // bytes

bool fail(std::string& reason, const std::string& path, const std::string& what)
{
    reason = path + ": " + what;
    return false;
}

} // namespace

bool KeyFile::readFrom(int file, std::string& reason)
{
    struct stat status;
    if (fstat(file, &status) != 0)
        return fail(reason, path_, strerror(errno));
    if (!S_ISREG(status.st_mode))
        return fail(reason, path_, "no regular file, which a key is");
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        return fail(reason, path_, "others may use this key: expected mode 0600 (chmod 600 FILE)");
    key_.assign(kLongestKey + 1, '\0');
    size_t length = 0;
    for (ssize_t got = 1; got != 0 && length < key_.size();) {
        got = ::read(file, key_.data() + length, key_.size() - length);
        if (got < 0 && errno != EINTR)
            return fail(reason, path_, strerror(errno));
        length += got > 0 ? static_cast<size_t>(got) : 0;
    }
    key_.resize(length);
    if (length >= kShortestKey && length <= kLongestKey)
        return true;
    return fail(reason, path_,
                "expected a key of " + std::to_string(kShortestKey) + " to " + std::to_string(kLongestKey) + " bytes");
}

bool KeyFile::read(std::string& reason)
{
    const host::Descriptor file(open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.isOpen())
        return readFrom(file.get(), reason);
    if (errno != ENOENT)
        return fail(reason, path_, strerror(errno));
    isNew_ = true;
    key_.assign(kNewKey, '\0');
    return RAND_bytes(reinterpret_cast<unsigned char*>(key_.data()), static_cast<int>(key_.size())) == 1 ||
           fail(reason, path_, "no random numbers for a new key");
}

// A key that is not whole is none: what was begun is taken away again.
bool KeyFile::keep(std::string& reason) const
{
    if (!isNew_)
        return true;
    const host::Descriptor file(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.isOpen())
        return fail(reason, path_, strerror(errno));
    errno = 0;
    if (write(file.get(), key_.data(), key_.size()) == static_cast<ssize_t>(key_.size()) && fsync(file.get()) == 0)
        return true;
    const int error = errno != 0 ? errno : EIO;
    unlink(path_.c_str());
    return fail(reason, path_, strerror(error));
}
} // namespace tool
