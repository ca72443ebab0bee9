// Logical Drive: what software puts together of disks and files: device mapper, RAID, zram, and loop devices in use.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/block/BlockDevice.h"
#include "host/block/FileSystemSizes.h"
#include "host/block/Mounts.h"
#include "host/block/UdevProperties.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kBlock = "/sys/block/";
constexpr uint32_t kLogicalVolume = 3;

// What device mapper's users begin their UUIDs with, and what their devices are.
struct MapperKind {
    std::string_view prefix;
    const char* level;
};
constexpr MapperKind kMapperKinds[] = {
    {"CRYPT-", "crypt"},
    {"mpath-", "multipath"},
    {"DMRAID-", "raid"},
    {"VDO-", "vdo"},
};
constexpr std::string_view kLvmPrefix = "LVM-";

bool isCrypt(const std::string& uuid)
{
    return uuid.starts_with("CRYPT-");
}

// A logical volume on one device alone is a stretch of it. On several ones it may be striped as well, and on volumes
// that LVM keeps for itself ("LVM-<ids>-tpool") it is a mirror, a pool's or a cache's: only device mapper knows.
bool isLinear(const Root& root, const std::string& folder)
{
    constexpr size_t kOwnUuid = 4 + 64; // LVM's prefix, and the ids of group and volume
    const std::vector<std::string> members = root.list(folder + "/slaves");
    if (members.size() != 1)
        return false;
    const std::string uuid = root.line(kBlock + members.front() + "/dm/uuid").value_or("");
    return !uuid.starts_with(kLvmPrefix) || uuid.size() <= kOwnUuid;
}

// True when a path of a multipath map is not in use, as its device says; absent where none says.
std::optional<bool> hasFailedPath(const Root& root, const std::string& folder)
{
    std::optional<bool> hasFailed;
    for (const std::string& member : root.list(folder + "/slaves"))
        if (const std::optional<std::string> state = root.line(kBlock + member + "/device/state"))
            hasFailed = hasFailed.value_or(false) || (*state != "running" && *state != "live");
    return hasFailed;
}

void addMapper(const Root& root, const std::string& folder, RowBuilder& row)
{
    const MaybeFact uuid = root.fact(folder + "/dm/uuid");
    row.text(LOGICAL_DRIVE_NAME, root.fact(folder + "/dm/name"));
    row.text(LOGICAL_DRIVE_UUID, uuid);
    if (uuid) {
        row.yesNo(LOGICAL_DRIVE_ENCRYPTED, isCrypt(uuid->value), uuid->source);
        if (uuid->value.starts_with(kLvmPrefix)) {
            row.number(LOGICAL_DRIVE_TYPE, kLogicalVolume, uuid->source);
            if (isLinear(root, folder))
                row.text(LOGICAL_DRIVE_LEVEL, "linear", folder + "/slaves");
        }
        for (const MapperKind& kind : kMapperKinds)
            if (uuid->value.starts_with(kind.prefix))
                row.text(LOGICAL_DRIVE_LEVEL, kind.level, uuid->source);
    }
    if (uuid && uuid->value.starts_with("mpath-"))
        row.yesNo(LOGICAL_DRIVE_DEGRADED, hasFailedPath(root, folder), folder + "/slaves");
    if (const std::optional<uint64_t> suspended = root.number(folder + "/dm/suspended"))
        row.text(LOGICAL_DRIVE_STATE, *suspended != 0 ? "suspended" : "active", folder + "/dm/suspended");
}

// The array's name as udev links it in /dev/md; a host's name before ":" is no part of it.
void addArray(const Root& root, const std::string& folder, RowBuilder& row)
{
    const UdevProperties udev(root, numberOf(root, folder));
    const MaybeFact devName = udev.value("MD_DEVNAME");
    const MaybeFact uuid = root.fact(folder + "/md/uuid");
    row.text(LOGICAL_DRIVE_NAME, devName);
    row.text(LOGICAL_DRIVE_LEVEL, root.fact(folder + "/md/level"));
    row.text(LOGICAL_DRIVE_STATE, root.fact(folder + "/md/array_state"));
    row.text(LOGICAL_DRIVE_UUID, uuid ? uuid : udev.value("MD_UUID"));
    if (const std::optional<uint64_t> degraded = root.number(folder + "/md/degraded"))
        row.yesNo(LOGICAL_DRIVE_DEGRADED, *degraded != 0, folder + "/md/degraded");
}

void addMembers(const Root& root, const std::string& folder, RowBuilder& row)
{
    std::string members;
    for (const std::string& member : root.list(folder + "/slaves"))
        members += (members.empty() ? "" : ",") + member;
    row.text(LOGICAL_DRIVE_MEMBERS, members, folder + "/slaves");
    if (members.empty())
        row.text(LOGICAL_DRIVE_MEMBERS, root.fact(folder + "/loop/backing_file"));
}

void addSizes(const Root& root, const std::string& folder, RowBuilder& row)
{
    const std::optional<uint64_t> sectors = root.number(folder + "/size");
    if (!sectors)
        return;
    row.number(LOGICAL_DRIVE_TOTAL_SIZE, *sectors / kSectorsPerMegabyte, folder + "/size");
    row.number(LOGICAL_DRIVE_SIZE_BYTES, *sectors * kSectorBytes, folder + "/size");
}

// Loop devices without a file and zram without a size are there and not in use.
bool isLogicalDrive(const Root& root, const std::string& name, const std::string& folder)
{
    if (name.starts_with("loop"))
        return root.exists(folder + "/loop/backing_file");
    if (name.starts_with("zram"))
        return root.number(folder + "/size").value_or(0) != 0;
    return name.starts_with("dm-") || (name.starts_with("md") && root.exists(folder + "/md"));
}

RowBuilder driveRow(const Root& root, const std::string& name, uint64_t index)
{
    const std::string folder = kBlock + name;
    RowBuilder row(GROUP_LOGICAL_DRIVE);
    row.number(LOGICAL_DRIVE_INDEX, index, kBlock);
    row.text(LOGICAL_DRIVE_DEVICE_NAME, nodeOf(name), folder);
    if (name.starts_with("dm-"))
        addMapper(root, folder, row);
    if (name.starts_with("md"))
        addArray(root, folder, row);
    if (!row.has(LOGICAL_DRIVE_NAME))
        row.text(LOGICAL_DRIVE_NAME, name, folder);
    addMembers(root, folder, row);
    addSizes(root, folder, row);
    return row;
}
} // namespace

void collectLogicalDrive(const Machine& machine, Collection& collection)
{
    const std::map<std::string, std::string> points = mountPoints(machine.root);
    std::vector<SizeQuestion> questions;
    std::vector<size_t> rows;
    uint64_t index = 0;
    for (const std::string& name : machine.root.list(kBlock)) {
        const std::string folder = kBlock + name;
        if (!isLogicalDrive(machine.root, name, folder))
            continue;
        const size_t row = collection.add(driveRow(machine.root, name, ++index));
        if (const auto point = points.find(numberOf(machine.root, folder)); point != points.end()) {
            questions.push_back({point->second, false});
            rows.push_back(row);
        }
    }
    askSizes(machine, questions, collection.notes(), [&](size_t question, const FileSystemSize& size) {
        RowBuilder values(GROUP_LOGICAL_DRIVE);
        values.number(LOGICAL_DRIVE_FREE_SIZE, size.availableBytes >> 20, "statvfs");
        collection.amend(rows[question], std::move(values));
    });
}
} // namespace host
