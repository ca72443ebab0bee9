// Any text as /proc/cpuinfo: no crash, no more processors than lines, and names and values lie in the text, not empty.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "host/processor/CpuInfo.h"

static void checkPart(std::string_view text, std::string_view part)
{
    if (part.empty() || part.data() < text.data() || part.data() + part.size() > text.data() + text.size())
        abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    auto linesLeft = std::count(text.begin(), text.end(), '\n') + 1;
    host::forEachProcessor(text, [&](uint32_t, const host::CpuInfo& lines) {
        if (--linesLeft < 0)
            abort();
        for (const auto& [key, value] : lines) {
            checkPart(text, key);
            checkPart(text, value);
            host::featureBits(value);
            host::implementerName(value);
        }
    });
    return 0;
}
