#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Makes the bytes of one firmware structure, field by field.
class Structure
{
public:
    /// length is that of the formatted area, and the length byte.
    Structure(unsigned type, size_t length) : formatted_(length)
    {
        formatted_.resize(length < 4 ? 4 : length);
        byte(0, type).byte(1, static_cast<unsigned>(length));
    }

    Structure& byte(size_t offset, unsigned value)
    {
        if (offset < formatted_.size())
            formatted_[offset] = static_cast<unsigned char>(value);
        return *this;
    }
    Structure& word(size_t offset, unsigned value) { return byte(offset, value & 0xFF).byte(offset + 1, value >> 8); }
    Structure& dword(size_t offset, uint32_t value)
    {
        return word(offset, value & 0xFFFF).word(offset + 2, value >> 16);
    }
    /// Adds a string and stores its number at offset; a field behind the formatted area does not exist.
    Structure& string(size_t offset, const std::string& text)
    {
        if (offset >= formatted_.size())
            return *this;
        addString(text);
        return byte(offset, stringCount_);
    }
    Structure& addString(const std::string& text)
    {
        strings_ += text;
        strings_ += '\0';
        ++stringCount_;
        return *this;
    }

    /// The structure with its strings and the end of the set.
    std::vector<unsigned char> bytes() const
    {
        std::vector<unsigned char> all = formatted_;
        all.insert(all.end(), strings_.begin(), strings_.end());
        all.insert(all.end(), strings_.empty() ? 2 : 1, 0);
        return all;
    }

    /// The bytes with an end-of-table structure behind them and so many zeros as a record may look at.
    std::vector<unsigned char> block() const
    {
        std::vector<unsigned char> all = bytes();
        all.insert(all.end(), {127, 4});
        all.resize(all.size() + 300);
        return all;
    }

private:
    std::vector<unsigned char> formatted_;
    std::string strings_;
    unsigned stringCount_ = 0;
};

/// Makes a structure table.
class TableBytes
{
public:
    TableBytes& add(const Structure& structure, int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            const std::vector<unsigned char> more = structure.bytes();
            bytes_.insert(bytes_.end(), more.begin(), more.end());
            ++count_;
        }
        return *this;
    }
    TableBytes& end() { return add(Structure(127, 4)); }

    const std::vector<unsigned char>& bytes() const { return bytes_; }
    int length() const { return static_cast<int>(bytes_.size()); }
    int count() const { return count_; }

private:
    std::vector<unsigned char> bytes_;
    int count_ = 0;
};
