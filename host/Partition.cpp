// Partition: a row a mount of a file system that holds files, and a row a swap area. All rows are handed over before
// the first file system is asked for its size, because one of a server that is gone never answers.

#include <algorithm>
#include <map>

#include "com/VexEnumValues.h"
#include "host/Collectors.h"
#include "host/Root.h"
#include "host/block/BlockDevice.h"
#include "host/block/FileSystemSizes.h"
#include "host/block/FileSystemType.h"
#include "host/block/Mounts.h"
#include "host/text/Secrets.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kSwaps = "/proc/swaps";
constexpr uint32_t kLogicalVolume = 3, kRamDisk = 6; // of Type and of Media Type

// What is asked once a device, however often it is mounted.
struct DeviceFacts {
    std::string name; // the kernel's: "sda1", "dm-0"; empty for a file system without a device
    ContentFacts content;
    bool isRemovable = false;
    bool isVolume = false; // put together by software
};

class Devices
{
public:
    explicit Devices(const Machine& machine) : machine_(machine) {}
    const DeviceFacts& of(const Mount& mount);

private:
    std::string folderOf(const Mount& mount) const;
    DeviceFacts read(const std::string& folder) const;

    const Machine& machine_;
    std::map<std::pair<std::string, std::string>, DeviceFacts> known_; // by number and source
};

const DeviceFacts& Devices::of(const Mount& mount)
{
    const std::pair<std::string, std::string> key(mount.number, mount.source);
    const auto found = known_.find(key);
    return found != known_.end() ? found->second : known_.emplace(key, read(folderOf(mount))).first->second;
}

// btrfs has numbers of its own, for it may stand on several devices: its source names one of them.
std::string Devices::folderOf(const Mount& mount) const
{
    constexpr std::string_view kNodes = "/dev/", kMapper = "/dev/mapper/";
    if (!mount.number.starts_with("0:") || !mount.source.starts_with(kNodes))
        return "/sys/dev/block/" + mount.number;
    if (!mount.source.starts_with(kMapper)) {
        std::string name = mount.source.substr(kNodes.size());
        std::replace(name.begin(), name.end(), '/', '!');
        return "/sys/class/block/" + name;
    }
    for (const std::string& name : machine_.root.list("/sys/block"))
        if (name.starts_with("dm-") &&
            machine_.root.line("/sys/block/" + name + "/dm/name") == mount.source.substr(kMapper.size()))
            return "/sys/block/" + name;
    return {};
}

DeviceFacts Devices::read(const std::string& folder) const
{
    DeviceFacts facts;
    const std::optional<std::string> path = folder.empty() ? std::nullopt : machine_.root.realPath(folder);
    if (!path)
        return facts;
    facts.name = path->substr(path->rfind('/') + 1);
    facts.content = contentOf(machine_, folder, nodeOf(facts.name));
    facts.isVolume = facts.name.starts_with("dm-") || facts.name.starts_with("md");
    const std::string disk = machine_.root.exists(folder + "/partition") ? path->substr(0, path->rfind('/')) : *path;
    facts.isRemovable = machine_.root.number(disk + "/removable").value_or(0) != 0;
    return facts;
}

uint32_t typeOf(const FileSystemType& type, const DeviceFacts& device)
{
    if (type.isRemote)
        return PARTITION_TYPE_REMOTE_DRIVE;
    return device.isVolume ? kLogicalVolume : PARTITION_TYPE_LOGICAL_DRIVE;
}

uint32_t mediaTypeOf(const FileSystemType& type, const DeviceFacts& device)
{
    if (type.isRemote)
        return PARTITION_MEDIA_REMOTE_DRIVE;
    if (type.code == PARTITION_FS_TYPE_CDROM)
        return PARTITION_MEDIA_CDROM;
    if (type.code == PARTITION_FS_TYPE_TMPFS || device.name.starts_with("zram"))
        return kRamDisk;
    if (device.isRemovable)
        return PARTITION_MEDIA_REMOVABLE_DISK;
    return device.name.empty() ? PARTITION_MEDIA_UNKNOWN : PARTITION_MEDIA_LOCAL_DISK;
}

// "subvol" of btrfs, else the folder of the file system that a bind mount shows.
std::string subvolumeOf(const Mount& mount)
{
    constexpr std::string_view kOption = "subvol=";
    for (const std::string_view option : report::split(mount.superOptions, ','))
        if (option.starts_with(kOption))
            return std::string(option.substr(kOption.size()));
    return mount.root == "/" ? "" : mount.root;
}

// A source may be a URI with a user's name and password in it.
RowBuilder mountRow(const Mount& mount, const DeviceFacts& device, uint64_t index)
{
    const FileSystemType type = fileSystemType(mount.type);
    const std::string source = maskUri(mount.source);
    RowBuilder row(GROUP_PARTITION);
    row.number(PARTITION_INDEX, index, kMountinfo);
    row.number(PARTITION_TYPE, typeOf(type, device), kMountinfo);
    row.number(PARTITION_MEDIA_TYPE, mediaTypeOf(type, device), kMountinfo);
    row.text(PARTITION_DEVICE_NAME, type.isRemote ? "remote" : source, kMountinfo);
    row.number(PARTITION_FS_TYPE, type.code, kMountinfo);
    row.text(PARTITION_FS_ACCESS_POINT, source, kMountinfo);
    row.text(PARTITION_FS_MOUNT_POINT, mount.point, kMountinfo);
    row.text(PARTITION_FS_TYPE_NAME, mount.type, kMountinfo);
    row.text(PARTITION_OPTIONS,
             maskOptions(mount.options + (mount.superOptions.empty() ? "" : ",") + mount.superOptions), kMountinfo);
    row.text(PARTITION_FS_UUID, device.content.uuid);
    row.text(PARTITION_FS_LABEL, device.content.label);
    row.text(PARTITION_DEVICE_NUMBER, mount.number, kMountinfo);
    row.text(PARTITION_SUBVOLUME, subvolumeOf(mount), kMountinfo);
    return row;
}

void addSizes(RowBuilder& row, uint64_t total, uint64_t available, std::string_view source)
{
    row.number(PARTITION_PHYSICAL_SIZE, total / 1024, source);
    row.number(PARTITION_FS_TOTAL_SIZE, total / 1024, source);
    row.number(PARTITION_FS_FREE_SIZE, available / 1024, source);
    row.number(PARTITION_TOTAL_BYTES, total, source);
    row.number(PARTITION_FREE_BYTES, available, source);
}

RowBuilder sizeValues(const FileSystemSize& size)
{
    constexpr std::string_view kSource = "statvfs";
    RowBuilder row(GROUP_PARTITION);
    addSizes(row, size.totalBytes, size.availableBytes, kSource);
    row.number(PARTITION_INODES, size.inodes, kSource);
    row.number(PARTITION_FREE_INODES, size.freeInodes, kSource);
    return row;
}

struct ListedMount {
    Mount mount;
    bool isHidden = false; // its path shows another mount, so that nobody can ask for its size
};

// A row a mount that holds files. Of those with the same keys the one that is seen, or else the uppermost, is the row.
std::vector<ListedMount> listedMounts(const Root& root)
{
    std::vector<Mount> mounts = readMounts(root);
    const std::vector<bool> hidden = hiddenMounts(mounts);
    std::map<std::pair<std::string, std::string>, size_t> rowOf; // by point and source
    std::vector<ListedMount> listed;
    for (size_t i = 0; i < mounts.size(); ++i) {
        if (isPseudo(mounts[i].type))
            continue;
        const auto [known, isNew] = rowOf.try_emplace({mounts[i].point, maskUri(mounts[i].source)}, listed.size());
        if (isNew)
            listed.push_back({std::move(mounts[i]), hidden[i]});
        else if (listed[known->second].isHidden)
            listed[known->second] = {std::move(mounts[i]), hidden[i]};
    }
    return listed;
}

// A line of /proc/swaps: path, type, size, used (kB), priority; a path ends at the type because blanks in it are
// escaped.
std::optional<RowBuilder> swapRow(const Machine& machine, std::string_view line, uint64_t index)
{
    const std::vector<std::string_view> words = report::words(line);
    const auto size = words.size() >= 4 ? report::parseNumber(words[2]) : std::nullopt;
    const auto used = words.size() >= 4 ? report::parseNumber(words[3]) : std::nullopt;
    if (!size || !used)
        return std::nullopt;
    const std::string path = unescapedOctal(words[0]);
    const bool isRam = path.starts_with("/dev/zram");
    RowBuilder row(GROUP_PARTITION);
    row.number(PARTITION_INDEX, index, kSwaps);
    row.number(PARTITION_TYPE, path.starts_with("/dev/dm-") ? kLogicalVolume : PARTITION_TYPE_LOGICAL_DRIVE, kSwaps);
    row.number(PARTITION_MEDIA_TYPE, isRam ? kRamDisk : uint32_t{PARTITION_MEDIA_LOCAL_DISK}, kSwaps);
    row.text(PARTITION_DEVICE_NAME, path, kSwaps);
    row.number(PARTITION_FS_TYPE, PARTITION_FS_TYPE_LINUX_SWAP, kSwaps);
    row.text(PARTITION_FS_ACCESS_POINT, path, kSwaps);
    row.text(PARTITION_FS_MOUNT_POINT, "swap", kSwaps);
    row.text(PARTITION_FS_TYPE_NAME, "swap", kSwaps);
    addSizes(row, *size * 1024, *size >= *used ? (*size - *used) * 1024 : 0, kSwaps);
    if (words[1] == "partition") {
        const ContentFacts content = contentOf(machine, "/sys/class/block/" + path.substr(path.rfind('/') + 1), path);
        row.text(PARTITION_FS_UUID, content.uuid);
        row.text(PARTITION_FS_LABEL, content.label);
    }
    return row;
}

void addSwaps(const Machine& machine, uint64_t index, Collection& collection)
{
    const std::string text = machine.root.read(kSwaps).value_or("");
    std::string_view rest = text;
    std::string_view line;
    report::takeLine(rest, line); // the heading
    while (report::takeLine(rest, line))
        if (std::optional<RowBuilder> row = swapRow(machine, line, index + 1)) {
            collection.add(std::move(*row));
            ++index;
        }
}
} // namespace

void collectPartition(const Machine& machine, Collection& collection)
{
    Devices devices(machine);
    std::vector<SizeQuestion> questions;
    std::vector<size_t> rows;
    uint64_t index = 0;
    for (const ListedMount& listed : listedMounts(machine.root)) {
        const Mount& mount = listed.mount;
        const size_t row = collection.add(mountRow(mount, devices.of(mount), ++index));
        if (listed.isHidden)
            continue;
        rows.push_back(row);
        questions.push_back({mount.point, fileSystemType(mount.type).isRemote});
    }
    addSwaps(machine, index, collection);
    askSizes(machine, questions, collection.notes(),
             [&](size_t question, const FileSystemSize& size) { collection.amend(rows[question], sizeValues(size)); });
}
} // namespace host
