// Disks as a tree: what lies on them, and where it is mounted.

#include <algorithm>
#include <map>
#include <set>

#include "com/VexEnumValues.h"
#include "report/Text.h"
#include "report/summary/Sections.h"

namespace report::summary
{
namespace
{
constexpr uint64_t kMegabyte = uint64_t{1} << 20; // of the catalog's sizes
constexpr std::string_view kDevices = "/dev/";
constexpr std::string_view kMapper = "/dev/mapper/";

// Mounts by the name of what is mounted.
using Mounts = std::multimap<std::string, const Row*, std::less<>>;

class DiskTree
{
public:
    explicit DiskTree(const Report& report) : report_(report) {}
    std::vector<SummaryLine> lines();
    /// How many lines there was no room for.
    uint64_t left() const { return left_; }

private:
    void readMounts();
    void readLogicalDrives();
    SummaryLine diskLine(const Row& disk);
    SummaryLine partitionLine(const Row& partition);
    SummaryLine logicalLine(const Row& drive);
    void addChildren(SummaryLine& line, const std::string& device);
    void addMounts(SummaryLine& line, const std::vector<std::string>& names);
    SummaryLine mountLine(const Row& mount);
    bool isMadeOfLogical(const Row& drive) const;
    bool takeRoom();

    const Report& report_;
    size_t room_ = kMostLines;
    uint64_t left_ = 0;
    Mounts mounts_;
    std::multimap<std::string, const Row*, std::less<>> logicalOf_;    // by the kernel name of a member
    std::multimap<std::string, const Row*, std::less<>> partitionsOf_; // by the device name of the disk
    std::set<const Row*> shownMounts_;
    std::set<const Row*> shownDrives_;
    std::set<std::string> logicalNames_; // kernel names of logical drives
};

std::string kernelName(std::string_view device)
{
    return std::string(device.starts_with(kDevices) ? device.substr(kDevices.size()) : device);
}

// Neither in memory nor one of the kernel's own, which have no size; a network's may have told none.
bool isOfInterest(const Row& mount)
{
    const std::string type = textOf(mount, PARTITION_FS_TYPE_NAME);
    if (type == "tmpfs" || type == "devtmpfs" || type == "ramfs" ||
        numberOf(mount, PARTITION_FS_TYPE) == uint64_t{PARTITION_FS_TYPE_TMPFS})
        return false;
    const bool isEmpty = numberOf(mount, PARTITION_FS_TOTAL_SIZE).value_or(0) == 0;
    return !isEmpty || textOf(mount, PARTITION_FS_ACCESS_POINT).find_first_of("/:") != std::string::npos;
}

// Each once: of a text that says one name a thousand times there is no more than of any other.
std::set<std::string> membersOf(const Row& drive)
{
    constexpr size_t kMost = 256;
    const std::string list = textOf(drive, LOGICAL_DRIVE_MEMBERS);
    std::set<std::string> members;
    for (const std::string_view member : split(list, ','))
        if (members.size() < kMost && !member.empty())
            members.emplace(trimmed(member));
    return members;
}

// A size that a scan of today tells in bytes, older ones in a larger unit.
std::string sizeOf(const Row& row, uint32_t bytes, uint32_t older, uint64_t unit)
{
    const std::string text = sizeText(row, bytes);
    return text.empty() ? sizeText(row, older, unit) : text;
}

std::string diskKind(const Row& disk)
{
    const std::string type = textOf(disk, STORAGE_TYPE);
    std::string kind = type == "Hard Disk" && numberOf(disk, STORAGE_ROTATIONAL) == 0U ? "SSD" : type;
    return joined({textOf(disk, STORAGE_TRANSPORT), kind}, " ");
}

SummaryCell usedCell(const Row& mount)
{
    const auto bytes = numberOf(mount, PARTITION_TOTAL_BYTES), left = numberOf(mount, PARTITION_FREE_BYTES);
    if (bytes && left)
        return *bytes != 0 ? usedOf(*bytes, *left) : SummaryCell{};
    const auto kilobytes = numberOf(mount, PARTITION_FS_TOTAL_SIZE), free = numberOf(mount, PARTITION_FS_FREE_SIZE);
    if (!kilobytes || !free || *kilobytes == 0 || *kilobytes > UINT32_MAX || *free > UINT32_MAX)
        return {};
    return usedOf(*kilobytes * 1024, *free * 1024);
}

// Columns of every line.
enum Column { NAME, SIZE, KIND, WHAT, MOUNTED, USED, COLUMNS };

SummaryLine lineOf(std::string name, std::string size, std::string kind, std::string what)
{
    SummaryLine line;
    line.cells = {{std::move(name)}, {std::move(size)}, {std::move(kind)}, {std::move(what)}, {}, {}};
    return line;
}

void setMount(SummaryLine& line, const Row& mount)
{
    line.cells[MOUNTED].text = textOf(mount, PARTITION_FS_MOUNT_POINT);
    line.cells[USED] = usedCell(mount);
}

void DiskTree::readMounts()
{
    for (const Row& mount : rowsOf(report_, GROUP_PARTITION))
        if (isOfInterest(mount))
            mounts_.emplace(textOf(mount, PARTITION_FS_ACCESS_POINT), &mount);
}

void DiskTree::readLogicalDrives()
{
    for (const Row& partition : rowsOf(report_, GROUP_DISK_PARTITION))
        partitionsOf_.emplace(textOf(partition, DISK_PARTITION_PARENT_DEVICE), &partition);
    for (const Row& drive : rowsOf(report_, GROUP_LOGICAL_DRIVE)) {
        logicalNames_.insert(kernelName(textOf(drive, LOGICAL_DRIVE_DEVICE_NAME)));
        for (const std::string& member : membersOf(drive))
            logicalOf_.emplace(member, &drive);
    }
}

// A member of the drive is a logical drive itself, below which this one belongs.
bool DiskTree::isMadeOfLogical(const Row& drive) const
{
    const std::set<std::string> members = membersOf(drive);
    return std::any_of(members.begin(), members.end(),
                       [this](const std::string& member) { return logicalNames_.count(member) != 0; });
}

bool DiskTree::takeRoom()
{
    if (room_ == 0) {
        ++left_;
        return false;
    }
    --room_;
    return true;
}

SummaryLine DiskTree::mountLine(const Row& mount)
{
    SummaryLine line = lineOf(textOf(mount, PARTITION_FS_ACCESS_POINT), "", textOf(mount, PARTITION_FS_TYPE_NAME), "");
    if (line.cells[KIND].text.empty() && numberOf(mount, PARTITION_FS_TYPE) != uint64_t{PARTITION_FS_TYPE_UNKNOWN})
        line.cells[KIND].text = textOf(mount, PARTITION_FS_TYPE);
    setMount(line, mount);
    return line;
}

// The first mount stands in the device's own line, others below it.
void DiskTree::addMounts(SummaryLine& line, const std::vector<std::string>& names)
{
    constexpr size_t kMost = 8; // a device can be bound to a thousand places
    for (const std::string& name : names) {
        const auto [begin, end] = mounts_.equal_range(name);
        for (auto mount = begin; mount != end; ++mount) {
            if (!shownMounts_.insert(mount->second).second)
                continue;
            if (line.cells[MOUNTED].text.empty()) {
                setMount(line, *mount->second);
                continue;
            }
            if (line.children.size() >= kMost)
                ++left_;
            if (line.children.size() >= kMost || !takeRoom())
                continue;
            line.children.push_back(lineOf(textOf(*mount->second, PARTITION_SUBVOLUME), "", "", ""));
            setMount(line.children.back(), *mount->second);
        }
    }
}

// What is made of several devices is shown below the first of them, and told below the others.
void DiskTree::addChildren(SummaryLine& line, const std::string& device)
{
    const auto [begin, end] = logicalOf_.equal_range(kernelName(device));
    for (auto drive = begin; drive != end; ++drive) {
        if (!takeRoom())
            continue;
        if (shownDrives_.count(drive->second) == 0) {
            line.children.push_back(logicalLine(*drive->second));
            continue;
        }
        line.children.push_back(lineOf(textOf(*drive->second, LOGICAL_DRIVE_NAME), "",
                                       textOf(*drive->second, LOGICAL_DRIVE_LEVEL), "see above"));
        for (SummaryCell& cell : line.children.back().cells)
            cell.tone = Tone::QUIET;
    }
}

SummaryLine DiskTree::logicalLine(const Row& drive)
{
    shownDrives_.insert(&drive);
    const std::string device = textOf(drive, LOGICAL_DRIVE_DEVICE_NAME), name = textOf(drive, LOGICAL_DRIVE_NAME);
    SummaryLine line = lineOf(name.empty() ? device : name,
                              sizeOf(drive, LOGICAL_DRIVE_SIZE_BYTES, LOGICAL_DRIVE_TOTAL_SIZE, kMegabyte),
                              textOf(drive, LOGICAL_DRIVE_LEVEL), device);
    if (numberOf(drive, LOGICAL_DRIVE_DEGRADED) == 1U) {
        line.cells[KIND].text += ", degraded";
        line.cells[KIND].tone = Tone::BAD;
    }
    addMounts(line, {device, std::string(kMapper) + name});
    addChildren(line, device);
    return line;
}

SummaryLine DiskTree::partitionLine(const Row& partition)
{
    const std::string device = textOf(partition, DISK_PARTITION_DEVICE_NAME);
    const std::string label = textOf(partition, DISK_PARTITION_FS_LABEL);
    SummaryLine line =
        lineOf(device, sizeOf(partition, DISK_PARTITION_SIZE_BYTES, DISK_PARTITION_TOTAL_SIZE, kMegabyte),
               textOf(partition, DISK_PARTITION_FS_TYPE_NAME),
               label.empty() ? textOf(partition, DISK_PARTITION_PARTITION_LABEL) : label);
    addMounts(line, {device});
    addChildren(line, device);
    return line;
}

SummaryLine DiskTree::diskLine(const Row& disk)
{
    const std::string device = textOf(disk, STORAGE_DEVICE_NAME);
    SummaryLine line = lineOf(device, sizeOf(disk, STORAGE_SIZE_BYTES, STORAGE_TOTAL_SIZE, kMegabyte), diskKind(disk),
                              joined({textOf(disk, STORAGE_MODEL), makersText(disk, {STORAGE_SERIAL_NUMBER})}, ", "));
    if (device.empty())
        std::swap(line.cells[NAME], line.cells[KIND]);
    if (device.empty())
        return line;
    addMounts(line, {device});
    const auto [begin, end] = partitionsOf_.equal_range(device);
    for (auto partition = begin; partition != end; ++partition)
        if (takeRoom())
            line.children.push_back(partitionLine(*partition->second));
    addChildren(line, device);
    return line;
}

std::vector<SummaryLine> DiskTree::lines()
{
    readMounts();
    readLogicalDrives();
    std::vector<SummaryLine> lines;
    for (const Row& disk : rowsOf(report_, GROUP_STORAGE))
        if (takeRoom())
            lines.push_back(diskLine(disk));
    // First those that others lie on; what lies on itself, as only a forged report says, comes at the end.
    for (const bool areOthersToo : {false, true})
        for (const Row& drive : rowsOf(report_, GROUP_LOGICAL_DRIVE))
            if (shownDrives_.count(&drive) == 0 && (areOthersToo || !isMadeOfLogical(drive)) && takeRoom())
                lines.push_back(logicalLine(drive));
    for (const Row& mount : rowsOf(report_, GROUP_PARTITION))
        if (isOfInterest(mount) && shownMounts_.insert(&mount).second && takeRoom())
            lines.push_back(mountLine(mount));
    return lines;
}
} // namespace

SummarySection diskSection(const Report& report)
{
    SummarySection section{.id = "disks", .title = "Disks"};
    section.columns = {{"Device"}, {"Size", true}, {"Kind"}, {"Model or label"}, {"Mounted on"}, {"Used", true}};
    DiskTree tree(report);
    section.lines = tree.lines();
    section.left = tree.left();
    section.group = "Partition";
    return section;
}
} // namespace report::summary
