// Any text as resolv.conf and as udev's file of memory devices: no crash, no more servers and devices than lines, and
// no server or domain holds a blank.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "host/firmware/MemoryDevices.h"
#include "host/network/LinkFacts.h"

static void check(const std::string& word)
{
    if (word.find_first_of(" \t\n\r") != std::string::npos)
        abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto lines = static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    const host::Resolver resolver = host::parseResolver(text);
    check(resolver.domain);
    for (const std::string& server : resolver.servers)
        check(server);
    if (resolver.servers.size() > lines || host::memoryDevicesOfUdev(text).size() > lines)
        abort();
    return 0;
}
