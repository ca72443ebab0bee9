#include "SMBIOS/EntryPoint.h"

#include <cstdlib>
#include <cstring>
#include <sys/mman.h>

#include "SMBIOS/IntelByteBuffer.h"
#include "SMBIOS/slm_mmap.h"

namespace
{

constexpr unsigned long kAreaStart = 0xF0000;
constexpr unsigned long kAreaEnd = 0xFFFFE;
constexpr unsigned long kParagraph = 16;

// Mapped bytes by their index; what lies behind the last mapped page reads as 0.
class MappedBytes
{
public:
    MappedBytes(const unsigned char* start, unsigned long length) : start_(start)
    {
        // Never written through: slm_page_align takes addresses of any use.
        void* const end = const_cast<unsigned char*>(start + length);
        size_ = static_cast<size_t>(static_cast<const unsigned char*>(slm_page_align(end, 2)) - start);
    }

    size_t size() const { return size_; }
    unsigned char at(size_t i) const { return i < size_ ? start_[i] : 0; }

    /// The index of the first 0 from i on; the size when there is none.
    size_t findZero(size_t i) const
    {
        if (i >= size_)
            return size_;
        const void* const zero = memchr(start_ + i, 0, size_ - i);
        return zero == nullptr ? size_ : static_cast<size_t>(static_cast<const unsigned char*>(zero) - start_);
    }

    /// A malloc'ed copy of the text from i up to end.
    char* copyText(size_t i, size_t end) const
    {
        return i < end ? strndup(reinterpret_cast<const char*>(start_ + i), end - i) : strdup("");
    }

private:
    const unsigned char* start_;
    size_t size_;
};

// The sum of count bytes, modulo 256.
unsigned char checksum(const MappedBytes& area, size_t start, size_t count)
{
    unsigned sum = 0;
    for (size_t i = 0; i < count; ++i)
        sum += area.at(start + i);
    return static_cast<unsigned char>(sum);
}

// Checks the first candidate of the mapped area and copies it.
int readEntryPoint(unsigned char* area, smbios_table_entry_point* ep)
{
    const unsigned char* const found = find_signature(area, kAreaEnd - kAreaStart);
    if (found == nullptr)
        return -1;
    const MappedBytes bytes(area, kAreaEnd - kAreaStart);
    const auto start = static_cast<size_t>(found - area);
    smbios_table_entry_point candidate;
    for (size_t i = 0; i < sizeof candidate.bytes; ++i)
        candidate.bytes[i] = bytes.at(start + i);
    if (checksum(bytes, start, candidate.length()) != 0 || checksum(bytes, start + 16, 15) != 0 ||
        candidate.majorVersion() <= 1)
        return -1;
    *ep = candidate;
    return 0;
}

// The index of the structure behind the one at current: after the two NULs that end its strings. The table's size when
// there is none.
size_t nextStructure(const MappedBytes& table, size_t current)
{
    size_t end = current + table.at(current + 1);
    while (end < table.size() && (table.at(end) != 0 || table.at(end + 1) != 0))
        end = table.findZero(end + 1);
    return end < table.size() ? end + 2 : table.size();
}

// Copies count successive strings from the index first on.
char** copyStrings(const MappedBytes& table, size_t first, int count)
{
    auto** const strings = static_cast<char**>(calloc(static_cast<size_t>(count), sizeof(char*)));
    for (int i = 0; strings != nullptr && i < count; ++i) {
        const size_t end = table.findZero(first);
        strings[i] = table.copyText(first, end);
        first = end + 1;
    }
    return strings;
}

} // namespace

uint16_t smbios_table_entry_point::tableLength() const
{
    return IntelByteBuffer::readUSHORT(bytes, 22);
}

uint32_t smbios_table_entry_point::tableAddress() const
{
    return IntelByteBuffer::readULONG(bytes, 24);
}

uint16_t smbios_table_entry_point::structureCount() const
{
    return IntelByteBuffer::readUSHORT(bytes, 28);
}

unsigned char* find_signature(unsigned char* area, unsigned long length)
{
    if (length <= kParagraph - 1)
        return nullptr;
    for (unsigned long p = 0; p < length - (kParagraph - 1); p += kParagraph)
        if (memcmp(area + p, "_SM_", 4) == 0)
            return area + p;
    return nullptr;
}

int find_table_ep(smbios_table_entry_point* ep)
{
    void* handle;
    void* const area = slm_phys_mmap(kAreaStart, kAreaEnd, 1, &handle);
    if (area == MAP_FAILED)
        return -1;
    const int result = readEntryPoint(static_cast<unsigned char*>(area) + slm_page_off(kAreaStart), ep);
    slm_phys_munmap(&handle);
    return result;
}

int find_entry(const unsigned char* table, const smbios_table_entry_point* ep, smbios_sysinfo_table_entry* out)
{
    *out = {};
    const MappedBytes bytes(table, ep->tableLength());
    const uint16_t structureCount = ep->structureCount();
    if (structureCount == 0)
        return 0;
    size_t current = 0;
    for (uint16_t passed = 0; bytes.at(current) != 1;) {
        current = nextStructure(bytes, current);
        if (current >= bytes.size() || ++passed == structureCount)
            return 0;
    }
    for (size_t i = 0; i < sizeof out->header; ++i)
        out->header[i] = bytes.at(current + i);
    int count = 0;
    for (int i = 4; i < 8; ++i)
        count = out->header[i] > count ? out->header[i] : count;
    if (count == 0)
        return 0;
    out->strings = copyStrings(bytes, current + out->header[1], count);
    return out->strings == nullptr ? 0 : count;
}

void free_entry(smbios_sysinfo_table_entry* entry, int count)
{
    for (int i = 0; i < count; ++i)
        free(entry->strings[i]);
    free(entry->strings);
    entry->strings = nullptr;
}
