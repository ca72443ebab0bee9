#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(DISK_PARTITION_INDEX, PLAIN, "", "`/sys/block/*/*/partition`: number in its table"),
    known(DISK_PARTITION_NAME, PLAIN, "", "`uevent`, PARTNAME; else the kernel's name"),
    known(DISK_PARTITION_DEVICE_NAME, PLAIN, "", "`/dev/` and the name of the folder in `/sys/block/*`"),
    known(DISK_PARTITION_TOTAL_SIZE, PLAIN, "MB", "`/sys/block/*/*/size` divided by 2048"),
    known(DISK_PARTITION_FREE_SIZE, VOLATILE, "MB", "`statvfs` where it is mounted"),
    known(DISK_PARTITION_FILE_SYSTEM_TYPE, PLAIN, "", "code as FS Type of Partition has it"),
    text(DISK_PARTITION_PARENT_DEVICE, "Parent Device", 255, PLAIN, "Device Name of the disk"),
    quad(DISK_PARTITION_SIZE_BYTES, "Size Bytes", "bytes", PLAIN, "`/sys/block/*/*/size` times 512"),
    quad(DISK_PARTITION_START_SECTOR, "Start Sector", "sectors of 512 bytes", PLAIN, "`/sys/block/*/*/start`"),
    text(DISK_PARTITION_PARTITION_UUID, "Partition UUID", 64, IDENTIFYING, "`uevent`, PARTUUID; else `/run/udev/data`, ID_PART_ENTRY_UUID"),
    text(DISK_PARTITION_PARTITION_TYPE, "Partition Type", 64, PLAIN, "`/run/udev/data`, ID_PART_ENTRY_TYPE: GUID or code"),
    text(DISK_PARTITION_PARTITION_LABEL, "Partition Label", 255, PLAIN, "`uevent`, PARTNAME; else `/run/udev/data`, ID_PART_ENTRY_NAME"),
    text(DISK_PARTITION_FS_UUID, "FS UUID", 64, IDENTIFYING, "`/run/udev/data`, ID_FS_UUID; else libblkid"),
    text(DISK_PARTITION_FS_LABEL, "FS Label", 255, PLAIN, "`/run/udev/data`, ID_FS_LABEL; else libblkid"),
    text(DISK_PARTITION_FS_TYPE_NAME, "FS Type Name", 64, PLAIN, "`/run/udev/data`, ID_FS_TYPE; else libblkid"),
};
// clang-format on

constexpr uint32_t kKeys[] = {DISK_PARTITION_DEVICE_NAME};
constexpr PairingDef kPairing[] = {{{DISK_PARTITION_PARTITION_UUID}}};

static_assert(isWellFormed(kAttributes), "DiskPartition: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "DiskPartition: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "DiskPartition: pairing without attribute");
} // namespace

constexpr GroupDef DISK_PARTITION_GROUP = {
    .id = GROUP_DISK_PARTITION,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "`/sys/block/*/*/partition`, `uevent`, `/run/udev/data`; libblkid where the device may be read: a row a "
              "partition",
};
} // namespace report
