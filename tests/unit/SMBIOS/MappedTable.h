#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

#include "SMBIOS/EntryPoint.h"

/// A structure table at some place of a page, in pages of its own with an inaccessible one behind them.
class MappedTable
{
public:
    MappedTable(const unsigned char* bytes, size_t size, size_t placeInPage)
    {
        const auto page = static_cast<size_t>(getpagesize());
        pages_ = (placeInPage + size + page - 1) / page * page;
        void* const start = mmap(nullptr, pages_ + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        mprotect(static_cast<char*>(start) + pages_, page, PROT_NONE);
        start_ = static_cast<unsigned char*>(start);
        table_ = start_ + placeInPage;
        if (size != 0)
            memcpy(table_, bytes, size);
    }
    MappedTable(const MappedTable&) = delete;
    MappedTable& operator=(const MappedTable&) = delete;
    ~MappedTable() { munmap(start_, pages_ + static_cast<size_t>(getpagesize())); }

    const unsigned char* table() const { return table_; }

private:
    size_t pages_;
    unsigned char* start_;
    unsigned char* table_;
};

/// An entry point that declares so many bytes and structures.
inline smbios_table_entry_point entryPointOf(size_t length, size_t structures)
{
    smbios_table_entry_point entry{};
    entry.bytes[22] = static_cast<unsigned char>(length & 0xFF);
    entry.bytes[23] = static_cast<unsigned char>(length >> 8);
    entry.bytes[28] = static_cast<unsigned char>(structures & 0xFF);
    entry.bytes[29] = static_cast<unsigned char>(structures >> 8);
    return entry;
}
