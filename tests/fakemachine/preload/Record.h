#pragma once

#include <cstddef>
#include <cstdint>

namespace fakemachine
{

/// Writes numbers one after the other, each little-endian in its own width, as the kernel lays out its records.
class Record
{
public:
    explicit Record(void* out) : out_(static_cast<unsigned char*>(out)) {}
    Record& add(uint64_t value, size_t width)
    {
        for (size_t i = 0; i < width; ++i)
            *out_++ = static_cast<unsigned char>(value >> (8 * i));
        return *this;
    }

private:
    unsigned char* out_;
};

} // namespace fakemachine
