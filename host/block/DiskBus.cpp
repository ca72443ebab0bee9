#include "host/block/DiskBus.h"

#include "host/Root.h"
#include "host/text/DevicePath.h"
#include "report/Text.h"

namespace host
{
namespace
{
std::string baseName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

// "ata3" -> 3
std::optional<uint32_t> numberBehind(std::string_view name, std::string_view prefix)
{
    return name.starts_with(prefix) ? report::parseNumber<uint32_t>(name.substr(prefix.size())) : std::nullopt;
}

// The kernel keeps the IDENTIFY block of the drive beside its port: ata3/link3/dev3.0/ata_device/dev3.0/id. The SCSI
// address's third number (host:channel:target:lun) is the drive on the port.
void readIdentify(const Root& root, DiskBus& bus)
{
    const std::vector<std::string_view> address = report::split(bus.address, ':');
    for (const std::string& ancestor : ancestorsOf(bus.device)) {
        const auto port = numberBehind(baseName(ancestor), "ata");
        if (!port || address.size() != 4)
            continue;
        const std::string device = "dev" + std::to_string(*port) + '.' + std::string(address[2]);
        bus.identifyPath = ancestor + "/link" + std::to_string(*port);
        bus.identifyPath.append("/").append(device).append("/ata_device/").append(device).append("/id");
        bus.identify = AtaIdentify::parse(root.read(bus.identifyPath).value_or(""));
        return;
    }
}

// What a component of the device's path says of the transport; the first that fits from the disk upwards counts.
struct PathSign {
    std::string_view prefix;
    const char* transport;
};
constexpr PathSign kSigns[] = {
    {"nvme", "NVMe"},     {"mmc", "MMC"},  {"end_device-", "SAS"}, {"rport-", "Fibre Channel"},
    {"session", "iSCSI"}, {"ata", "SATA"}, {"usb", "USB"},         {"virtio", "virtio"},
};

const char* transportOf(const DiskBus& bus)
{
    for (const std::string& ancestor : ancestorsOf(bus.device))
        for (const PathSign& sign : kSigns)
            if (baseName(ancestor).starts_with(sign.prefix))
                return bus.identify && !bus.identify->isSerial() && sign.prefix == "ata" ? "ATA" : sign.transport;
    return bus.device.find("/host") != std::string::npos ? "SCSI" : "Other";
}

// The controller is the first device above the disk that has a driver and is no part of the SCSI layer.
void readController(const Root& root, DiskBus& bus)
{
    for (const std::string& ancestor : ancestorsOf(bus.device)) {
        const std::string subsystem = root.linkName(ancestor + "/subsystem").value_or("");
        if (subsystem == "scsi" || subsystem.empty())
            continue;
        const std::optional<std::string> driver = root.linkName(ancestor + "/driver");
        if (subsystem == "pci" && baseName(bus.device).starts_with("nvme"))
            bus.address = baseName(ancestor);
        if (!driver)
            continue;
        bus.driver = Fact{*driver, ancestor + "/driver"};
        return;
    }
}

void readUsb(const Root& root, DiskBus& bus)
{
    for (const std::string& ancestor : ancestorsOf(bus.device)) {
        if (!root.exists(ancestor + "/idVendor"))
            continue;
        bus.usbDevice = ancestor;
        return;
    }
}

// The device of a disk; of an NVMe disk that the kernel reaches through several controllers the first one of these.
std::optional<std::string> deviceOf(const Root& root, const std::string& folder)
{
    std::optional<std::string> device = root.realPath(folder + "/device");
    if (!device || !baseName(*device).starts_with("nvme-subsys"))
        return device;
    for (const std::string& name : root.list(*device))
        if (numberBehind(name, "nvme"))
            if (std::optional<std::string> controller = root.realPath(*device + '/' + name))
                return controller;
    return device;
}
} // namespace

DiskBus readDiskBus(const Root& root, const std::string& folder)
{
    DiskBus bus{};
    bus.transport = "Other";
    const std::optional<std::string> device = deviceOf(root, folder);
    if (!device)
        return bus;
    bus.device = *device;
    bus.address = baseName(bus.device);
    readIdentify(root, bus);
    bus.transport = transportOf(bus);
    readController(root, bus);
    if (std::string_view(bus.transport) == "USB")
        readUsb(root, bus);
    return bus;
}
} // namespace host
