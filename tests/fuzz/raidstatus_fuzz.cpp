// The status files of the DAC960 and CCISS drivers and the mount listing: any text. Every drive that is counted gets
// its record, and no text taken from a line holds the line's end.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "linux/storage/CCISSDrives.h"
#include "linux/storage/CompaqSmartDrives.h"
#include "linux/storage/DAC960Drives.h"
#include "linux/text/TextStream.h"

static bool isOneLine(const std::string& text)
{
    return text.find('\n') == std::string::npos;
}

static void readRecords(std::string& text)
{
    TextStream counted(fmemopen(text.data(), text.size(), "r"));
    std::vector<RAIDInfo> records(static_cast<size_t>(countLogicalDrives(counted)));
    TextStream status(fmemopen(text.data(), text.size(), "r"));
    readCurrentStatus(status, records);
    for (const RAIDInfo& record : records) {
        if (record.device.empty() || !isOneLine(record.device + record.level + record.controllerName))
            abort();
    }
}

static void readSizes(std::string& text)
{
    TextStream status(fmemopen(text.data(), text.size(), "r"));
    if (readSmartDiskSizes(status).size() > text.size())
        abort();
}

static void readMounts(std::string& text)
{
    TextStream mounts(fmemopen(text.data(), text.size(), "r"));
    std::string disks;
    char line[256];
    while (mounts.readLine(line)) {
        if (takeMountedDisk(line, &disks) && disks.find(line) == std::string::npos)
            abort();
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    text += '\n';
    readRecords(text);
    readSizes(text);
    readMounts(text);
    return 0;
}
