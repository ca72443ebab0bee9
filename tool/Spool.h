#pragma once

#include <memory>
#include <ostream>

namespace tool
{
/// Text that waits in a temporary file until what must stand before it is known.
class Spool
{
public:
    Spool();
    ~Spool();
    Spool(const Spool&) = delete;
    Spool& operator=(const Spool&) = delete;

    std::ostream& stream() { return stream_; }
    /// Writes all of it to a stream, which fails when the spool has failed: no temporary file, no room for it.
    void copyTo(std::ostream& out);

private:
    std::unique_ptr<std::streambuf> buffer_;
    int descriptor_;
    std::ostream stream_;
};
} // namespace tool
