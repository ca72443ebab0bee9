// What file systems tell of themselves and of a file.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <nlohmann/json.hpp>

#include "host/kernel/Questions.h"

namespace host
{
// Bytes of so many blocks, as many as fit.
static uint64_t bytesOf(uint64_t blocks, uint64_t blockSize)
{
    uint64_t bytes = 0;
    return __builtin_mul_overflow(blocks, blockSize, &bytes) ? UINT64_MAX : bytes;
}

nlohmann::json askFileSystemSize(const std::string& mountPoint)
{
    struct statvfs size;
    if (statvfs(mountPoint.c_str(), &size) != 0)
        return nullptr;
    const uint64_t blockSize = size.f_frsize != 0 ? size.f_frsize : size.f_bsize;
    return {{"totalBytes", bytesOf(size.f_blocks, blockSize)},
            {"freeBytes", bytesOf(size.f_bfree, blockSize)},
            {"availableBytes", bytesOf(size.f_bavail, blockSize)},
            {"inodes", static_cast<uint64_t>(size.f_files)},
            {"freeInodes", static_cast<uint64_t>(size.f_ffree)}};
}

nlohmann::json askBirthTime(const std::string& path)
{
    struct statx status;
    if (statx(AT_FDCWD, path.c_str(), AT_NO_AUTOMOUNT, STATX_BTIME, &status) != 0 ||
        (status.stx_mask & STATX_BTIME) == 0)
        return nullptr;
    return static_cast<int64_t>(status.stx_btime.tv_sec);
}

nlohmann::json askModificationTime(const std::string& path)
{
    struct statx status;
    if (statx(AT_FDCWD, path.c_str(), AT_NO_AUTOMOUNT, STATX_MTIME, &status) != 0 ||
        (status.stx_mask & STATX_MTIME) == 0)
        return nullptr;
    return static_cast<int64_t>(status.stx_mtime.tv_sec);
}
} // namespace host
