#include "tool/Spool.h"

#include <array>
#include <cerrno>
#include <ext/stdio_filebuf.h>
#include <unistd.h>

#include "report/TemporaryFile.h"

namespace tool
{
namespace
{
constexpr size_t kBlock = size_t{64} * 1024;
} // namespace

Spool::Spool() : descriptor_(report::temporaryFile()), stream_(nullptr)
{
    if (descriptor_ == -1)
        return; // a stream without a buffer has failed
    buffer_ =
        std::make_unique<__gnu_cxx::stdio_filebuf<char>>(dup(descriptor_), std::ios::out | std::ios::binary, kBlock);
    stream_.rdbuf(buffer_.get());
}

Spool::~Spool()
{
    if (descriptor_ != -1)
        close(descriptor_);
}

void Spool::copyTo(std::ostream& out)
{
    stream_.flush();
    if (!stream_.good()) {
        out.setstate(std::ios::badbit);
        return;
    }
    std::array<char, kBlock> block;
    off_t place = 0;
    ssize_t got = 0;
    while ((got = pread(descriptor_, block.data(), block.size(), place)) > 0 || (got < 0 && errno == EINTR)) {
        out.write(block.data(), std::max<ssize_t>(got, 0));
        place += std::max<ssize_t>(got, 0);
    }
    if (got < 0)
        out.setstate(std::ios::badbit);
}
} // namespace tool
