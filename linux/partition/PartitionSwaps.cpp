#include "linux/partition/PartitionSwaps.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "com/VexDebug.h"
#include "linux/partition/PartitionRows.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

namespace
{

// The kernel's file:
//   Filename                Type        Size     Used    Priority
//   /dev/sda2               partition   524280   0       -1
// Names are written with blanks escaped. A swap file whose name is gone has "(deleted)" as a word of its own before the
// type.

constexpr size_t kLineSize = 256;

struct SwapArea {
    char path[kLineSize];
    uint32_t size; // kilobytes
    uint32_t used; // kilobytes
};

bool isHeader(const char* line)
{
    static constexpr const char* kTitles[] = {"Filename", "Type", "Size", "Used"};
    return std::any_of(std::begin(kTitles), std::end(kTitles),
                       [line](const char* title) { return contains(line, title); });
}

// False when a field is missing.
bool parseSwapLine(const char* line, SwapArea* area)
{
    char type[kLineSize];
    int end = 0;
    if (sscanf(line, "%255s %255s%n", area->path, type, &end) != 2)
        return false;
    const char* rest = line + end;
    if (type[0] == '(') {
        if (sscanf(rest, "%255s%n", type, &end) != 1)
            return false;
        rest += end;
    }
    return readULong(&rest, &area->size) && readULong(&rest, &area->used);
}

void addSwapRow(const SwapArea& area)
{
    PartitionRow row;
    row.mediaType = PARTITION_MEDIA_LOCAL_DISK;
    row.deviceName = area.path;
    row.fsType = PARTITION_FS_TYPE_LINUX_SWAP;
    row.accessPoint = area.path;
    row.mountPoint = "swap";
    row.totalSize = area.size;
    const uint32_t freeSize = area.size - area.used;
    row.freeSize = freeSize > INT32_MAX ? 0 : freeSize; // 0 when negative as a signed number
    addPartitionRow(row);
}

bool readHeader(TextStream& swaps)
{
    char line[kLineSize];
    if (!swaps.readLine(line)) {
        VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\n! Unexpected end of file");
        return false;
    }
    VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "%s", line);
    if (!isHeader(line)) {
        VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\n! Unexpected file format");
        return false;
    }
    return true;
}

} // namespace

void addSwapRows(TextStream& swaps)
{
    if (!readHeader(swaps))
        return;
    char line[kLineSize];
    while (swaps.readLine(line)) {
        VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "%s", line);
        SwapArea area;
        if (strchr(line, '#') != nullptr || !parseSwapLine(line, &area))
            continue;
        VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "   ... path: %s  used: %i/%i\n", area.path,
                static_cast<int32_t>(area.used), static_cast<int32_t>(area.size));
        addSwapRow(area);
    }
}

void addSwapPartitions()
{
    TextStream swaps = TextStream::openFile("/proc/swaps");
    if (swaps)
        addSwapRows(swaps);
}
