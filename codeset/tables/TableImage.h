#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "codeset/TableLayout.h"

/// A table file under construction. All offsets are multiples of 4.
class TableImage
{
public:
    explicit TableImage(size_t size = TableLayout::kMinSize) : bytes_(size, '\0') {}

    void put8(size_t offset, unsigned value) { bytes_[offset] = static_cast<char>(value); }

    void put16(size_t offset, unsigned value)
    {
        put8(offset, value & 0xFF);
        put8(offset + 1, value >> 8 & 0xFF);
    }

    void put32(size_t offset, uint32_t value)
    {
        put16(offset, value & 0xFFFF);
        put16(offset + 2, value >> 16);
    }

    void putText(size_t offset, const std::string& text) { bytes_.replace(offset, text.size(), text); }

    /// Appends an array of 16-bit or 32-bit words and returns where it begins.
    template <class Word>
    size_t append(const std::vector<Word>& words)
    {
        const size_t start = (bytes_.size() + 3) / 4 * 4;
        bytes_.resize(start + words.size() * sizeof(Word), '\0');
        for (size_t i = 0; i < words.size(); ++i)
            if constexpr (sizeof(Word) == 2)
                put16(start + i * sizeof(Word), words[i]);
            else
                put32(start + i * sizeof(Word), words[i]);
        return start;
    }

    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// Rows of equal length, each content held once.
template <class Word>
class RowSet
{
public:
    /// The number of the row with these words.
    unsigned add(const std::vector<Word>& row)
    {
        const auto [known, isNew] = numbers_.try_emplace(row, static_cast<unsigned>(numbers_.size()));
        if (isNew)
            words_.insert(words_.end(), row.begin(), row.end());
        return known->second;
    }

    unsigned count() const { return static_cast<unsigned>(numbers_.size()); }
    const std::vector<Word>& words() const { return words_; }

private:
    std::map<std::vector<Word>, unsigned> numbers_;
    std::vector<Word> words_;
};
