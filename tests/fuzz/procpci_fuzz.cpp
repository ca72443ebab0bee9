// Any bytes as /proc/pci: no crash, and every reported device has a name and a revision of two digits.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "linux/pci/ProcPci.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    TextStream stream(fmemopen(const_cast<uint8_t*>(data), size, "r"));
    ProcPciParser parser;
    char line[256];
    while (stream.readLine(line)) {
        dropTrailingControl(line);
        if (!parser.takeLine(line))
            continue;
        const ProcPciDevice& device = parser.device();
        if (device.name[0] == '\0' || strlen(device.revision) != 4 || strncmp(device.revision, "0x", 2) != 0)
            abort();
    }
    return 0;
}
