// Any output of the run level's command: no crash, and the level is that of one character.

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "linux/UnixSystemParamsGroup.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    TextStream stream(fmemopen(text.data(), text.size(), "r"));
    const int32_t level = readRunLevel(stream);
    if (level < SCHAR_MIN - '0' || level > SCHAR_MAX - '0' || (size < 3 && level != 0))
        abort();
    return 0;
}
