// Any bytes as the output of "lspci -m": no crash, and every device has both names and no quote in them.

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "linux/pci/Lspci.h"
#include "linux/text/TextStream.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    TextStream stream(fmemopen(const_cast<uint8_t*>(data), size, "r"));
    char line[256];
    while (stream.readLine(line)) {
        LspciDevice device;
        if (!parseLspciLine(line, &device))
            continue;
        if (device.name.size() < 3 || device.name.find('"') != std::string::npos)
            abort();
        if (!device.revision.empty() && device.revision.size() < 3)
            abort();
    }
    return 0;
}
