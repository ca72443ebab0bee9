#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// One structure of a firmware table (DSP0134, 6.1), built field by field; all other bytes of its formatted area are 0.
class StructureBytes
{
public:
    StructureBytes(uint8_t type, size_t length, uint16_t handle = 0) : bytes_(length, '\0')
    {
        put(0, type, 1);
        put(1, length, 1);
        put(2, handle, 2);
    }

    /// A little-endian field.
    StructureBytes& put(size_t offset, uint64_t value, size_t size)
    {
        for (size_t i = 0; i < size; ++i)
            bytes_[offset + i] = static_cast<char>(value >> (8 * i));
        return *this;
    }

    /// A string, whose number comes to stand at the offset.
    StructureBytes& string(size_t offset, const std::string& text)
    {
        strings_ += text + '\0';
        return put(offset, ++count_, 1);
    }

    /// The structure with its strings and their end.
    std::string bytes() const { return bytes_ + (strings_.empty() ? std::string(1, '\0') : strings_) + '\0'; }

private:
    std::string bytes_, strings_;
    uint8_t count_ = 0;
};

inline std::string endOfTable()
{
    return StructureBytes(127, 4).bytes();
}
