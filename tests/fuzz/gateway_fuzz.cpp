// Any bytes as a network configuration file: no crash with an output of any size, and a gateway starts with a digit.

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "linux/network/Gateway.h"
#include "linux/text/TextStream.h"

static void search(const uint8_t* data, size_t size, const char* key, unsigned long outSize)
{
    TextStream stream(fmemopen(const_cast<uint8_t*>(data), size, "r"));
    char out[255] = "";
    const bool found = readGateway(stream, key, out, outSize);
    if (strnlen(out, outSize) == outSize || (!found && out[0] != '\0'))
        abort();
    if (found && outSize > 1 && isdigit(static_cast<unsigned char>(out[0])) == 0)
        abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    for (const char* key : {"GATEWAY", "GATEWAY=", "default"}) {
        for (const unsigned long outSize : {1UL, 4UL, 255UL})
            search(data, size, key, outSize);
    }
    return 0;
}
