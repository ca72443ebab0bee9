// The floppy driver's record of a disk and the text of /proc/cpuinfo: any bytes, taken for each of them.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <linux/fd.h>
#include <string>

#include "linux/floppyinfo.h"
#include "linux/text/TextStream.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    floppy_struct disk = {};
    memcpy(&disk, data, std::min(size, sizeof disk));
    const FloppyGeometry geometry = decodeFloppyGeometry(disk);
    if (geometry.sectorSize < 128 || geometry.sectorSize > 16384)
        abort();
    std::string text(reinterpret_cast<const char*>(data), size);
    text += '\n';
    TextStream stream(fmemopen(text.data(), text.size(), "r"));
    describesItanium(stream);
    return 0;
}
