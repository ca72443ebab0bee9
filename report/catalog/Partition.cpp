#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(PARTITION_INDEX, PLAIN, "", "row number from 1, over mounts and swap areas"),
    known(PARTITION_TYPE, PLAIN, "", "Remote Drive for network file systems, Logical Volume on device mapper and RAID, else Logical Drive"),
    known(PARTITION_MEDIA_TYPE, PLAIN, "", "from the file system's type and its device's kind"),
    known(PARTITION_DEVICE_NAME, PLAIN, "", "`/proc/self/mountinfo`, mount source (\"remote\" for a remote drive); `/proc/swaps`, path"),
    known(PARTITION_PHYSICAL_SIZE, PLAIN, "kB", "`statvfs`, all blocks; `/proc/swaps`, size"),
    known(PARTITION_FS_TYPE, PLAIN, "", "file system's type, by name; Linux native for ext4, xfs and btrfs, UNKNOWN where there is no code"),
    known(PARTITION_FS_ACCESS_POINT, IDENTIFYING_IF_HOST_OR_USER, "", "`/proc/self/mountinfo`, mount source; `/proc/swaps`, path", 4096),
    known(PARTITION_FS_MOUNT_POINT, IDENTIFYING_IF_HOST_OR_USER, "", "`/proc/self/mountinfo`, mount point; \"swap\"", 4096),
    known(PARTITION_FS_TOTAL_SIZE, PLAIN, "kB", "as Physical Size"),
    known(PARTITION_FS_FREE_SIZE, VOLATILE, "kB", "`statvfs`, blocks free for users; `/proc/swaps`, size less used"),
    text(PARTITION_FS_TYPE_NAME, "FS Type Name", 64, PLAIN, "`/proc/self/mountinfo`, file system's type; swap"),
    text(PARTITION_OPTIONS, "Options", 4096, IDENTIFYING, "`/proc/self/mountinfo`, mount and super block options, secrets masked"),
    text(PARTITION_FS_UUID, "FS UUID", 64, IDENTIFYING, "`/run/udev/data`, ID_FS_UUID; else libblkid"),
    text(PARTITION_FS_LABEL, "FS Label", 255, PLAIN, "`/run/udev/data`, ID_FS_LABEL; else libblkid"),
    quad(PARTITION_TOTAL_BYTES, "Total Bytes", "bytes", PLAIN, "`statvfs`, all blocks; `/proc/swaps`, size"),
    quad(PARTITION_FREE_BYTES, "Free Bytes", "bytes", VOLATILE, "`statvfs`, blocks free for users; `/proc/swaps`, size less used"),
    quad(PARTITION_INODES, "Inodes", "", PLAIN, "`statvfs`, files"),
    quad(PARTITION_FREE_INODES, "Free Inodes", "", VOLATILE, "`statvfs`, free files"),
    text(PARTITION_DEVICE_NUMBER, "Device Number", 32, PLAIN, "`/proc/self/mountinfo`, major:minor"),
    text(PARTITION_SUBVOLUME, "Subvolume", 4096, PLAIN, "`/proc/self/mountinfo`, \"subvol\" of btrfs; else the root of a bind mount"),
};
// clang-format on

constexpr uint32_t kKeys[] = {PARTITION_FS_MOUNT_POINT, PARTITION_FS_ACCESS_POINT};
constexpr PairingDef kPairing[] = {{{PARTITION_FS_UUID, PARTITION_FS_MOUNT_POINT}}};

static_assert(isWellFormed(kAttributes), "Partition: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Partition: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "Partition: pairing without attribute");
} // namespace

constexpr GroupDef PARTITION_GROUP = {
    .id = GROUP_PARTITION,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "`/proc/self/mountinfo`, `/proc/swaps` and `statvfs`: a row a mount and a swap area, pseudo file systems "
              "left out",
};
} // namespace report
