// What fdisk and ps print: any text. A lookup succeeds with three figures or leaves the geometry alone.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "linux/storage/FdiskGeometry.h"
#include "linux/storage/TapeActivity.h"
#include "linux/text/TextStream.h"

static void check(int found, const DriveGeometry& geometry)
{
    const bool complete = geometry.heads != 0 && geometry.cylinders != 0 && geometry.sectors != 0;
    const bool untouched =
        geometry.heads == 0 && geometry.cylinders == 0 && geometry.sectors == 0 && geometry.kilobytes == 0;
    if (found == 1 ? !complete : !untouched)
        abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    text += '\n';
    auto stream = [&text] { return TextStream(fmemopen(text.data(), text.size(), "r")); };
    DriveGeometry listed;
    TextStream listing = stream();
    check(findListedGeometry(listing, "/dev/", &listed), listed);
    DriveGeometry mounted;
    TextStream answer = stream();
    check(findMountedGeometry(answer, &mounted), mounted);
    TextStream processes = stream();
    listsTapeProcess(processes);
    return 0;
}
