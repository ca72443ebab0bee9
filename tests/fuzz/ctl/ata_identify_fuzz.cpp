// Any text as the kernel's print of an IDENTIFY block: no crash, and of a block that is taken no text is longer than
// its words or holds a zero byte.

#include <cstdint>
#include <cstdlib>

#include "host/block/AtaIdentify.h"

static void check(const std::string& text, size_t words)
{
    if (text.size() > 2 * words || text.find('\0') != std::string::npos)
        abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto identify = host::AtaIdentify::parse({reinterpret_cast<const char*>(data), size});
    if (!identify)
        return 0;
    if (size < 2 * host::AtaIdentify::kWords - 1)
        abort();
    check(identify->serialNumber(), 10);
    check(identify->firmwareRevision(), 4);
    check(identify->model(), 20);
    return 0;
}
