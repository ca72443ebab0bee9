// An IDE device's files under /proc/ide and its identify data: any bytes, taken for each of them.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "linux/ideinfo.h"
#include "linux/storage/IDEDrives.h"
#include "linux/text/TextStream.h"

static void require(bool condition)
{
    if (!condition)
        abort();
}

static void readFiles(std::string& text)
{
    TextStream geometry(fmemopen(text.data(), text.size(), "r"));
    uint32_t numbers[3] = {};
    parseIDEgeometry(geometry, numbers);
    require(std::all_of(numbers, numbers + 3, [](uint32_t number) { return number <= INT32_MAX; }));
    TextStream lines(fmemopen(text.data(), text.size(), "r"));
    char line[256];
    while (lines.readLine(line)) {
        require(parseIDEcapacity(line) < 0x7FFFFFFF);
        resolveIDEtype(line);
        char manufacturer[256];
        char model[256];
        splitIDEmodel(line, manufacturer, model);
        require(strlen(manufacturer) + strlen(model) <= strlen(line));
    }
}

static void decodeIdentify(const uint8_t* data, size_t size)
{
    unsigned char identify[kIdentifySize] = {};
    std::copy_n(data, std::min(size, sizeof identify), identify);
    char serialNumber[21];
    decodeIDEserialnumber(identify, serialNumber);
    require(memchr(serialNumber, '\0', sizeof serialNumber) != nullptr);
    const int32_t security = decodeIDEsecurity(identify);
    require(security >= -1 && security <= 1);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    text += '\n';
    readFiles(text);
    decodeIdentify(data, size);
    return 0;
}
