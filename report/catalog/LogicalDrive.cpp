#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(LOGICAL_DRIVE_INDEX, PLAIN, "", "row number from 1"),
    known(LOGICAL_DRIVE_TYPE, PLAIN, "", "3 for a logical volume, as Type of Partition has it"),
    known(LOGICAL_DRIVE_NAME, PLAIN, "", "`dm/name`; the array's name in `/dev/md` by `/run/udev/data`; else the kernel's name"),
    known(LOGICAL_DRIVE_DEVICE_NAME, PLAIN, "", "`/dev/` and the name of the folder in `/sys/block`"),
    known(LOGICAL_DRIVE_TOTAL_SIZE, PLAIN, "MB", "`/sys/block/*/size` divided by 2048"),
    known(LOGICAL_DRIVE_FREE_SIZE, VOLATILE, "MB", "`statvfs` where it is mounted"),
    text(LOGICAL_DRIVE_LEVEL, "Level", 32, PLAIN, "`md/level`; else by `dm/uuid`: linear, crypt, multipath ..."),
    text(LOGICAL_DRIVE_STATE, "State", 32, VOLATILE, "`md/array_state`; `dm/suspended`"),
    text(LOGICAL_DRIVE_MEMBERS, "Members", 4096, PLAIN, "names in `slaves/`; `loop/backing_file`"),
    text(LOGICAL_DRIVE_UUID, "UUID", 255, IDENTIFYING, "`dm/uuid`; `md/uuid`, else `/run/udev/data`, MD_UUID"),
    quad(LOGICAL_DRIVE_SIZE_BYTES, "Size Bytes", "bytes", PLAIN, "`/sys/block/*/size` times 512"),
    yesNo(LOGICAL_DRIVE_DEGRADED, "Degraded", VOLATILE, "`md/degraded` is not 0; of a multipath map `device/state` of a path is not running"),
    yesNo(LOGICAL_DRIVE_ENCRYPTED, "Encrypted", PLAIN, "`dm/uuid` begins with CRYPT-"),
};
// clang-format on

constexpr uint32_t kKeys[] = {LOGICAL_DRIVE_NAME};
constexpr PairingDef kPairing[] = {{{LOGICAL_DRIVE_UUID}}};

static_assert(isWellFormed(kAttributes), "LogicalDrive: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "LogicalDrive: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "LogicalDrive: pairing without attribute");
} // namespace

constexpr GroupDef LOGICAL_DRIVE_GROUP = {
    .id = GROUP_LOGICAL_DRIVE,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "`/sys/block/{dm,md,zram,loop}*`: a row a device mapper volume, RAID array, zram and loop device in use",
};
} // namespace report
