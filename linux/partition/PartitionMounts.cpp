#include "linux/partition/PartitionMounts.h"

#include <cstring>
#include <mntent.h>
#include <sys/statvfs.h>

#include "com/VexDebug.h"
#include "linux/partition/PartitionRows.h"

namespace
{

constexpr uint32_t kBlocksPerUnit = 1024;

// A number of blocks is counted in units of 1024 blocks, one of which has as many kilobytes as a block has bytes, and
// the blocks left over.
uint32_t unitKilobytes(uint64_t blocks, uint32_t fragmentSize)
{
    return static_cast<uint32_t>(blocks / kBlocksPerUnit) * fragmentSize;
}

uint32_t leftOverKilobytes(uint64_t blocks, uint32_t fragmentSize)
{
    return static_cast<uint32_t>(blocks % kBlocksPerUnit) * fragmentSize / 1024;
}

// A copy of a name, cut to what a report's text may hold.
class CutName
{
public:
    explicit CutName(const char* name) { snprintf(text_, sizeof text_, "%.255s", name); }
    const char* text() const { return text_; }

private:
    char text_[256];
};

struct FileSystemSize {
    uint32_t total = 0; // kilobytes
    uint32_t free = 0;  // kilobytes that users without privileges may still fill
};

// Numbers of the log lines are those of 32-bit words, whatever the build: the low 32 bits of a count of blocks.
unsigned long logWord(uint64_t value)
{
    return static_cast<uint32_t>(value);
}

FileSystemSize readFileSystemSize(const char* mountPoint)
{
    FileSystemSize size;
    struct statvfs status;
    if (statvfs(mountPoint, &status) != 0)
        return size;
    const auto fragmentSize = static_cast<uint32_t>(status.f_frsize);
    VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\n    f_bsize : %lu  f_blocks : %lu", logWord(status.f_bsize),
            logWord(status.f_blocks));
    VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\n    f_tot : %lu  f_tot_modk : %lu",
            logWord(unitKilobytes(status.f_blocks, fragmentSize)),
            logWord(leftOverKilobytes(status.f_blocks, fragmentSize)));
    size.total = kilobytesOfBlocks(status.f_blocks, fragmentSize);
    size.free = kilobytesOfBlocks(status.f_bavail, fragmentSize);
    VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\n    totalsize : %lu  freesize : %lu", logWord(size.total),
            logWord(size.free));
    return size;
}

} // namespace

uint32_t kilobytesOfBlocks(uint64_t blocks, uint32_t fragmentSize)
{
    const uint64_t units = blocks / kBlocksPerUnit;
    const uint64_t leftOver = blocks % kBlocksPerUnit;
    // The products of such a size would wrap to a small figure, so it is told apart before.
    if (fragmentSize != 0 && units > UINT32_MAX / fragmentSize)
        return UINT32_MAX;
    if (units * fragmentSize + leftOver * fragmentSize / 1024 > UINT32_MAX)
        return UINT32_MAX;
    return leftOverKilobytes(blocks, fragmentSize) + unitKilobytes(blocks, fragmentSize);
}

void doEntry(const char* device, const char* mountPoint, const char* fsType)
{
    const CutName accessPoint(device);
    const CutName mountName(mountPoint);
    const CutName typeName(fsType);
    PartitionRow row;
    row.deviceName = accessPoint.text();
    row.accessPoint = accessPoint.text();
    row.mountPoint = mountName.text();
    row.fsType = get_fstype_enum(fsType);
    VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\ndevname: [%s]  mountname: [%s]  fstype: [%s] (%i)",
            accessPoint.text(), mountName.text(), typeName.text(), static_cast<int>(row.fsType));
    if (isPseudoFileSystem(device, mountPoint, fsType)) {
        VEX_LOG(DEBUG_PARTITION, VEX_LEVEL_DETAIL, "\n  -- skipped --");
        return;
    }
    if (isRemote(fsType) != 0) {
        row.type = PARTITION_TYPE_REMOTE_DRIVE;
        row.deviceName = "remote";
    }
    const FileSystemSize size = readFileSystemSize(mountPoint);
    row.totalSize = size.total;
    row.freeSize = size.free;
    row.mediaType = getMediaType(fsType, device);
    addPartitionRow(row);
}

void addMountEntries(FILE* mountTable)
{
    while (const mntent* entry = getmntent(mountTable))
        doEntry(entry->mnt_fsname, entry->mnt_dir, entry->mnt_type);
}
