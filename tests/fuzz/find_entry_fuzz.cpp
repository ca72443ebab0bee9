// Any bytes as a mapped structure table, at any place of its first page and with any declared length on its pages;
// behind the last page nothing may be touched. The first six bytes are the place, the structure count and the length to
// leave undeclared.

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "SMBIOS/EntryPoint.h"
#include "tests/unit/SMBIOS/MappedTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 6 || size > 0x10006)
        return 0;
    const auto word = [data](size_t at) { return static_cast<size_t>(data[at] | data[at + 1] << 8); };
    const size_t place = word(0) % static_cast<size_t>(getpagesize());
    const size_t length = size - 6;
    const MappedTable mapped(data + 6, length, place);
    // The last page is the same as long as the undeclared bytes stand on it.
    const size_t onLastPage = (place + length) % static_cast<size_t>(getpagesize());
    const size_t undeclared = onLastPage == 0 ? 0 : word(4) % onLastPage;
    const smbios_table_entry_point entryPoint = entryPointOf(length - (undeclared < length ? undeclared : 0), word(2));
    smbios_sysinfo_table_entry entry;
    const int count = find_entry(mapped.table(), &entryPoint, &entry);
    if (count < 0 || count > 255 || (count != 0 && entry.header[0] != 1))
        abort();
    size_t total = 0;
    for (int i = 0; i < count; ++i)
        total += entry.strings[i] == nullptr ? 0 : strlen(entry.strings[i]);
    free_entry(&entry, count);
    return total <= length + 0x10000 ? 0 : -1;
}
