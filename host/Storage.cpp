// Storage: a row a whole device: disks of every transport, optical drives, tapes, floppies. What is put together by
// software is Logical Drive's. A SATA disk's own words (its IDENTIFY block) come before what the SCSI layer makes of
// them.

#include "com/VexEnumValues.h"
#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "host/block/BlockDevice.h"
#include "host/block/DiskBus.h"
#include "host/block/MediaKind.h"
#include "host/pci/PciNames.h"
#include "host/text/DevicePath.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kBlock = "/sys/block/";
constexpr const char* kTapes = "/sys/class/scsi_tape/";

// One device and all that its row is made of.
struct Disk {
    std::string name;
    std::string folder; // without a slash at its end
    DiskBus bus;
    std::optional<uint32_t> pciVendor;
};

// The vendor of the PCI function that the device sits on.
std::optional<uint32_t> pciVendorOf(const Root& root, const DiskBus& bus)
{
    for (const std::string& ancestor : ancestorsOf(bus.device))
        if (root.linkName(ancestor + "/subsystem") == "pci")
            if (const std::optional<uint64_t> vendor = root.number(ancestor + "/vendor"))
                return static_cast<uint32_t>(*vendor);
    return std::nullopt;
}

// Virtual devices are no drives, but for the head of an NVMe disk with several controllers; its hidden paths are none
// either.
bool isDrive(const Root& root, const std::string& name, const std::string& folder)
{
    if (root.number(folder + "/hidden").value_or(0) != 0)
        return false;
    const std::string path = root.realPath(folder).value_or("");
    return !path.starts_with("/sys/devices/virtual/") || name.starts_with("nvme");
}

void addDisk(const Root& root, const std::string& name, const std::string& folder, std::vector<Disk>& disks)
{
    Disk disk{name, folder, readDiskBus(root, folder), {}};
    disk.pciVendor = pciVendorOf(root, disk.bus);
    disks.push_back(std::move(disk));
}

// Tapes have several nodes each; the plain one stands for the drive.
std::vector<Disk> readDisks(const Root& root)
{
    std::vector<Disk> disks;
    for (const std::string& name : root.list(kBlock))
        if (const std::string folder = kBlock + name; isDrive(root, name, folder))
            addDisk(root, name, folder, disks);
    for (const std::string& name : root.list(kTapes))
        if (name.starts_with("st") && report::parseNumber(name.substr(2)))
            addDisk(root, name, kTapes + name, disks);
    return disks;
}

// The serial number page of SCSI (SPC-4, 7.8.15): four bytes of header, the last two of which are the length.
MaybeFact vitalSerial(const Root& root, const std::string& folder)
{
    constexpr size_t kHeader = 4;
    const std::string path = folder + "/device/vpd_pg80";
    const std::optional<std::string> page = root.read(path, Root::kLineLimit);
    if (!page || page->size() <= kHeader)
        return std::nullopt;
    const size_t length = static_cast<uint8_t>((*page)[2]) * 256U + static_cast<uint8_t>((*page)[3]);
    const std::string serial(report::trimmed(std::string_view(*page).substr(kHeader, length)));
    return serial.empty() ? std::nullopt : MaybeFact(Fact{serial, path});
}

MaybeFact firstFact(const Root& root, std::initializer_list<std::string> paths)
{
    for (const std::string& path : paths)
        if (MaybeFact fact = root.fact(path))
            return fact;
    return std::nullopt;
}

MaybeFact serialOf(const Root& root, const Disk& disk)
{
    if (disk.bus.identify && !disk.bus.identify->serialNumber().empty())
        return Fact{disk.bus.identify->serialNumber(), disk.bus.identifyPath};
    if (MaybeFact serial = vitalSerial(root, disk.folder))
        return serial;
    if (!disk.bus.usbDevice.empty())
        return root.fact(disk.bus.usbDevice + "/serial");
    return firstFact(root, {disk.folder + "/device/serial", disk.folder + "/serial"});
}

MaybeFact modelOf(const Root& root, const Disk& disk)
{
    if (disk.bus.identify && !disk.bus.identify->model().empty())
        return Fact{disk.bus.identify->model(), disk.bus.identifyPath};
    if (MaybeFact model = firstFact(root, {disk.folder + "/device/model", disk.folder + "/device/name"}))
        return model;
    if (std::string_view(disk.bus.transport) == "virtio")
        return Fact{"Virtio block device", disk.folder};
    return std::nullopt;
}

// "ATA" is the SCSI layer's word for disks that name no vendor; their models begin with it, or with letters that are
// known.
MaybeFact manufacturerOf(const Root& root, const Disk& disk, const MaybeFact& model, const PciNames& names)
{
    MaybeFact vendor = root.fact(disk.folder + "/device/vendor");
    const bool isName = vendor && vendor->value != "ATA" && !vendor->value.starts_with("0x");
    if (isName)
        return vendor;
    if (disk.bus.identify && model)
        return Fact{makerOfModel(model->value), model->source};
    if (const MaybeFact id = root.fact(disk.folder + "/device/manfid"))
        return Fact{makerOfCard(id->value), id->source};
    if (disk.pciVendor)
        return Fact{names.vendor(*disk.pciVendor), names.source()};
    return std::nullopt;
}

void addIdentity(const Root& root, const Disk& disk, const PciNames& names, RowBuilder& row)
{
    const MaybeFact model = modelOf(root, disk);
    row.text(STORAGE_MODEL, model);
    row.text(STORAGE_MANUFACTURER, manufacturerOf(root, disk, model, names));
    row.text(STORAGE_SERIAL_NUMBER, serialOf(root, disk));
    if (disk.bus.identify)
        row.text(STORAGE_FIRMWARE_REVISION, disk.bus.identify->firmwareRevision(), disk.bus.identifyPath);
    if (!row.has(STORAGE_FIRMWARE_REVISION))
        row.text(STORAGE_FIRMWARE_REVISION,
                 firstFact(root, {disk.folder + "/device/firmware_rev", disk.folder + "/device/rev",
                                  disk.folder + "/device/fwrev"}));
    row.text(STORAGE_WWN, firstFact(root, {disk.folder + "/wwid", disk.folder + "/device/wwid"}));
}

void addGeometry(const Disk& disk, RowBuilder& row)
{
    constexpr uint32_t kYes = 0, kNo = 1, kUnsupported = 2;
    const std::string& source = disk.bus.identifyPath;
    if (!disk.bus.identify || disk.bus.identify->isPacketDevice()) {
        row.number(STORAGE_SECURITY_ENABLED, kUnsupported, "");
        return;
    }
    row.number(STORAGE_CYLINDERS, disk.bus.identify->cylinders(), source);
    row.number(STORAGE_HEADS, disk.bus.identify->heads(), source);
    row.number(STORAGE_SECTORS, disk.bus.identify->sectors(), source);
    const bool hasSecurity = disk.bus.identify->hasSecurity();
    row.number(STORAGE_SECURITY_ENABLED,
               hasSecurity ? (disk.bus.identify->isSecurityEnabled() ? kYes : kNo) : kUnsupported, source);
}

void addSizes(const Root& root, const std::string& folder, RowBuilder& row)
{
    if (const std::optional<uint64_t> sectors = root.number(folder + "/size")) {
        row.number(STORAGE_TOTAL_SIZE, *sectors / kSectorsPerMegabyte, folder + "/size");
        row.number(STORAGE_SIZE_BYTES, *sectors * kSectorBytes, folder + "/size");
    }
    row.number(STORAGE_LOGICAL_SECTOR_SIZE, root.number(folder + "/queue/logical_block_size"),
               folder + "/queue/logical_block_size");
    row.number(STORAGE_PHYSICAL_SECTOR_SIZE, root.number(folder + "/queue/physical_block_size"),
               folder + "/queue/physical_block_size");
}

void addFlag(const Root& root, const std::string& path, uint32_t attribute, RowBuilder& row)
{
    if (const std::optional<uint64_t> number = root.number(path))
        row.yesNo(attribute, *number != 0, path);
}

void addQueue(const Root& root, const std::string& folder, RowBuilder& row)
{
    addFlag(root, folder + "/queue/rotational", STORAGE_ROTATIONAL, row);
    addFlag(root, folder + "/removable", STORAGE_REMOVABLE, row);
    addFlag(root, folder + "/ro", STORAGE_READ_ONLY, row);
    addFlag(root, folder + "/queue/discard_max_bytes", STORAGE_DISCARD, row);
    row.text(STORAGE_ZONED, root.fact(folder + "/queue/zoned"));
}

// The multipath map that holds the disk.
void addMultipath(const Root& root, const std::string& folder, RowBuilder& row)
{
    for (const std::string& holder : root.list(folder + "/holders")) {
        const std::string map = kBlock + holder + "/dm/";
        if (root.line(map + "uuid").value_or("").starts_with("mpath-"))
            row.text(STORAGE_MULTIPATH, root.fact(map + "name"));
    }
}

void addPartitionTable(const Machine& machine, const Disk& disk, RowBuilder& row)
{
    const MaybeFact table = contentOf(machine, disk.folder, nodeOf(disk.name)).partitionTable;
    if (table && (table->value == "gpt" || table->value == "dos"))
        row.text(STORAGE_PARTITION_TABLE, table->value == "gpt" ? "GPT" : "MBR", table->source);
}

// The digest of geometry and size, which an ID has always been.
void addId(RowBuilder& row)
{
    std::string identity;
    for (const uint32_t attribute :
         std::initializer_list<uint32_t>{STORAGE_CYLINDERS, STORAGE_HEADS, STORAGE_SECTORS, STORAGE_SIZE_BYTES})
        if (const report::Value* value = row.row().find(attribute))
            identity += std::to_string(std::get<uint64_t>(value->content)) + ' ';
    row.text(STORAGE_ID, md5(identity), "");
}

// What the kernel's monitor of the drive measures, for all to read.
void addTemperature(const Root& root, const Disk& disk, RowBuilder& row)
{
    constexpr uint64_t kFraction = 1000;
    for (const std::string& folder : {disk.folder + "/device/", disk.folder + "/device/hwmon/"})
        for (const std::string& name : root.list(folder)) {
            const std::string input = folder + name + "/temp1_input";
            if (name.starts_with("hwmon") && name != "hwmon")
                if (const std::optional<uint64_t> fractions = root.number(input))
                    row.number(STORAGE_TEMPERATURE_CELSIUS, (*fractions + kFraction / 2) / kFraction, input);
        }
}

RowBuilder diskRow(const Machine& machine, const Disk& disk, const PciNames& names, uint64_t index)
{
    const Root& root = machine.root;
    RowBuilder row(GROUP_STORAGE);
    row.number(STORAGE_INDEX, index, kBlock);
    row.text(STORAGE_DEVICE_NAME, nodeOf(disk.name), disk.folder);
    row.text(STORAGE_TRANSPORT, disk.bus.transport, disk.bus.device);
    row.text(STORAGE_BUS_ADDRESS, disk.bus.address, disk.bus.device);
    row.text(STORAGE_DRIVER, disk.bus.driver);
    addIdentity(root, disk, names, row);
    addGeometry(disk, row);
    addSizes(root, disk.folder, row);
    addQueue(root, disk.folder, row);
    addMultipath(root, disk.folder, row);
    const report::Value* model = row.row().find(STORAGE_MODEL);
    const std::string modelText = model != nullptr ? std::get<std::string>(model->content) : "";
    row.number(STORAGE_TYPE, mediaKind(root, disk.name, modelText), disk.folder);
    addPartitionTable(machine, disk, row);
    addTemperature(root, disk, row);
    addId(row);
    return row;
}

// The node of an NVMe disk's controller; empty of other disks.
std::string controllerNode(const Disk& disk)
{
    constexpr std::string_view kNvme = "nvme";
    const std::string name = disk.bus.device.substr(disk.bus.device.rfind('/') + 1);
    const bool isController = name.starts_with(kNvme) && report::parseNumber<uint32_t>(name.substr(kNvme.size()));
    return isController ? "/dev/" + name : "";
}

RowBuilder healthValues(const NvmeHealth& health, const std::string& source)
{
    constexpr uint64_t kUnitBytes = 512'000, kFreezing = 273; // kelvin
    RowBuilder values(GROUP_STORAGE);
    values.number(STORAGE_CRITICAL_WARNING, health.criticalWarning, source);
    values.number(STORAGE_AVAILABLE_SPARE, health.availableSpare, source);
    values.number(STORAGE_PERCENTAGE_USED, health.percentageUsed, source);
    values.number(STORAGE_POWER_ON_HOURS, health.powerOnHours, source);
    if (const std::optional<uint64_t> units = health.dataUnitsWritten) {
        uint64_t bytes = 0;
        const bool isTooMuch = __builtin_mul_overflow(*units, kUnitBytes, &bytes);
        values.number(STORAGE_DATA_WRITTEN_BYTES, isTooMuch ? UINT64_MAX : bytes, source);
    }
    if (health.kelvin.value_or(0) >= kFreezing) // 0 where it is not measured
        values.number(STORAGE_TEMPERATURE_CELSIUS, *health.kelvin - kFreezing, source);
    return values;
}

void amendHealth(const Machine& machine, const Disk& disk, size_t row, Collection& collection)
{
    const std::string node = controllerNode(disk);
    if (node.empty())
        return;
    if (const std::optional<NvmeHealth> health = machine.kernel.nvmeHealth(node))
        collection.amend(row, healthValues(*health, "NVME_IOCTL_ADMIN_CMD " + node));
}
} // namespace

void collectStorage(const Machine& machine, Collection& collection)
{
    const std::vector<Disk> disks = readDisks(machine.root);
    PciNames names;
    for (const Disk& disk : disks)
        if (disk.pciVendor)
            names.want(*disk.pciVendor, 0);
    names.read(machine.root);
    uint64_t index = 0;
    std::vector<size_t> rows;
    rows.reserve(disks.size());
    for (const Disk& disk : disks)
        rows.push_back(collection.add(diskRow(machine, disk, names, ++index)));
    for (size_t i = 0; i < disks.size(); ++i) // a controller may keep who asks waiting
        amendHealth(machine, disks[i], rows[i], collection);
}
} // namespace host
