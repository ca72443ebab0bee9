// Any bytes as /etc/resolv.conf: no crash, the second name server comes after the first, and no text holds a blank.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "linux/network/ResolvConf.h"
#include "linux/text/TextStream.h"

static void check(const char* text, size_t size)
{
    if (strnlen(text, size) == size || strpbrk(text, " \t\n") != nullptr)
        abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    TextStream stream(fmemopen(const_cast<uint8_t*>(data), size, "r"));
    ResolvConf settings;
    readResolvConf(stream, &settings);
    check(settings.domain, sizeof settings.domain);
    check(settings.nameServer1, sizeof settings.nameServer1);
    check(settings.nameServer2, sizeof settings.nameServer2);
    if (settings.nameServer1[0] == '\0' && settings.nameServer2[0] != '\0')
        abort();
    return 0;
}
