// Any text of /proc/meminfo: no crash; a total of 0 is never taken for an answer that a "MemTotal: " line gave.

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "linux/MemoryGroup.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    TextStream stream(fmemopen(text.data(), text.size(), "r"));
    MemoryAmounts amounts;
    const bool complete = readMeminfo(stream, &amounts);
    if (size == 0 && complete)
        abort();
    if (complete && amounts.total == 0 && text.starts_with("MemTotal: ") && text.find("MemTotal: ", 1) == text.npos)
        abort();
    std::unique_ptr<VexTableRow>(newMemoryRow(amounts, 4096, MemorySlots{amounts.free, amounts.swapFree}));
    return 0;
}
