#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "preload/Text.h"

namespace fakemachine
{

/// Physical memory as a readable text describes it (see README.md): stretches of bytes, zeros between them.
class MemoryImage
{
public:
    /// Parses the text of a memory.txt; name stands in messages.
    MemoryImage(const std::string& text, const std::string& name);

    uint64_t size() const { return size_; }

    /// Copies up to count bytes from address on into out; the number copied, 0 at and beyond the end.
    size_t read(uint64_t address, void* out, size_t count) const;

private:
    struct Table {
        uint64_t length = 0;
        unsigned count = 0;
    };
    struct Structure {
        unsigned type = 0;
        unsigned handle = 0;
        unsigned repeat = 1; // so many alike, with handles that count up
        std::string formatted;
        std::string strings;
        size_t offset = 4;
        size_t length = 0;   // 0: as long as what is written
        int lengthByte = -1; // -1: the true length
    };

    void parseLine(const std::vector<Word>& words, const LinePlace& place);
    void parseEntry(const std::vector<Word>& words, const LinePlace& place);
    void beginStructure(const std::vector<Word>& words, const LinePlace& place);
    void parseStructureLine(const std::vector<Word>& words, const LinePlace& place);
    void endStructure();
    void put(const std::string& bytes);
    void addEntries();

    uint64_t size_ = 0x100000; // a PC has at least its first megabyte
    uint64_t position_ = 0;
    uint64_t tableStart_ = 0;
    bool inStructure_ = false;
    unsigned nextHandle_ = 0;
    Structure structure_;
    std::map<uint64_t, Table> tables_;
    std::map<uint64_t, std::string> stretches_;
    std::vector<std::pair<std::vector<Word>, LinePlace>> entries_; // made last, when the tables are known
};

} // namespace fakemachine
