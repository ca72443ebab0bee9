#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace host
{
/// Owns a file descriptor, or none (-1). Closing leaves errno alone.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        if (this != &other) {
            reset();
            number_ = other.release();
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool isOpen() const { return number_ != -1; }
    int get() const { return number_; }
    /// Hands the descriptor over to the caller.
    int release() { return std::exchange(number_, -1); }

private:
    void reset()
    {
        const int error = errno;
        if (number_ != -1)
            close(number_);
        number_ = -1;
        errno = error;
    }

    int number_ = -1;
};
} // namespace host
