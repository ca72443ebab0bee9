// Disk Partition: a row a partition of every disk, with what stands on it.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/block/BlockDevice.h"
#include "host/block/FileSystemSizes.h"
#include "host/block/FileSystemType.h"
#include "host/block/Mounts.h"
#include "host/block/UdevProperties.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kBlock = "/sys/block/";

// The kernel's own words of a partition: PARTNAME, and from 6.9 on PARTUUID.
MaybeFact ueventValue(const Root& root, const std::string& folder, std::string_view name)
{
    const std::string path = folder + "/uevent";
    const std::string text = root.read(path, Root::kLineLimit).value_or("");
    std::string_view rest = text;
    std::string_view line;
    while (report::takeLine(rest, line)) {
        const auto [key, value] = report::keyValue(line, '=');
        if (key == name && !value.empty())
            return Fact{std::string(value), path};
    }
    return std::nullopt;
}

void addSizes(const Root& root, const std::string& folder, RowBuilder& row)
{
    if (const std::optional<uint64_t> sectors = root.number(folder + "/size")) {
        row.number(DISK_PARTITION_TOTAL_SIZE, *sectors / kSectorsPerMegabyte, folder + "/size");
        row.number(DISK_PARTITION_SIZE_BYTES, *sectors * kSectorBytes, folder + "/size");
    }
    row.number(DISK_PARTITION_START_SECTOR, root.number(folder + "/start"), folder + "/start");
}

void addTableEntry(const Root& root, const std::string& folder, const std::string& name, RowBuilder& row)
{
    const UdevProperties udev(root, numberOf(root, folder));
    const MaybeFact label = ueventValue(root, folder, "PARTNAME");
    const MaybeFact uuid = ueventValue(root, folder, "PARTUUID");
    row.text(DISK_PARTITION_NAME, label ? label : MaybeFact(Fact{name, folder}));
    row.text(DISK_PARTITION_PARTITION_LABEL, label ? label : udev.value("ID_PART_ENTRY_NAME"));
    row.text(DISK_PARTITION_PARTITION_UUID, uuid ? uuid : udev.value("ID_PART_ENTRY_UUID"));
    row.text(DISK_PARTITION_PARTITION_TYPE, udev.value("ID_PART_ENTRY_TYPE"));
}

void addContent(const Machine& machine, const std::string& folder, const std::string& node, RowBuilder& row)
{
    const ContentFacts content = contentOf(machine, folder, node);
    row.text(DISK_PARTITION_FS_UUID, content.uuid);
    row.text(DISK_PARTITION_FS_LABEL, content.label);
    row.text(DISK_PARTITION_FS_TYPE_NAME, content.type);
    if (content.type)
        row.number(DISK_PARTITION_FILE_SYSTEM_TYPE, fileSystemType(content.type->value).code, content.type->source);
}

std::string folderOf(const std::string& disk, const std::string& name)
{
    return kBlock + disk + '/' + name;
}

RowBuilder partitionRow(const Machine& machine, const std::string& disk, const std::string& name)
{
    const Root& root = machine.root;
    const std::string folder = folderOf(disk, name);
    RowBuilder row(GROUP_DISK_PARTITION);
    row.number(DISK_PARTITION_INDEX, root.number(folder + "/partition"), folder + "/partition");
    row.text(DISK_PARTITION_DEVICE_NAME, nodeOf(name), folder);
    row.text(DISK_PARTITION_PARENT_DEVICE, nodeOf(disk), folder);
    addSizes(root, folder, row);
    addTableEntry(root, folder, name, row);
    addContent(machine, folder, nodeOf(name), row);
    return row;
}
} // namespace

void collectDiskPartition(const Machine& machine, Collection& collection)
{
    const std::map<std::string, std::string> points = mountPoints(machine.root);
    std::vector<SizeQuestion> questions;
    std::vector<size_t> rows;
    for (const std::string& disk : machine.root.list(kBlock)) {
        for (const std::string& name : machine.root.list(kBlock + disk)) {
            const std::string folder = folderOf(disk, name);
            if (!name.starts_with(disk) || !machine.root.exists(folder + "/partition"))
                continue;
            const size_t row = collection.add(partitionRow(machine, disk, name));
            const auto point = points.find(numberOf(machine.root, folder));
            if (point == points.end())
                continue;
            questions.push_back({point->second, false});
            rows.push_back(row);
        }
    }
    askSizes(machine, questions, collection.notes(), [&](size_t question, const FileSystemSize& size) {
        RowBuilder values(GROUP_DISK_PARTITION);
        values.number(DISK_PARTITION_FREE_SIZE, size.availableBytes >> 20, "statvfs");
        collection.amend(rows[question], std::move(values));
    });
}
} // namespace host
