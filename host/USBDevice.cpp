// USB Device: a row a device on the bus, hubs and root hubs too, as the kernel's folders show them. "usb1" is a root
// hub, "1-4.2" what is plugged into port 2 of the hub "1-4", "1-4.2:1.0" an interface of it.

#include <charconv>

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "host/pci/PciNames.h"
#include "host/usb/UsbNumber.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kDevices = "/sys/bus/usb/devices/";
constexpr uint64_t kHubClass = 9;

// One device and what its row is made of.
struct UsbDevice {
    std::string name;
    std::string folder;    // with a slash at its end
    std::string interface; // the folder of its first one, empty when it has none
    std::optional<uint64_t> vendor, product, deviceClass;
};

bool isRootHub(std::string_view name)
{
    return name.starts_with("usb");
}

// What the interfaces' names begin with: "1-0:" of "usb1", "1-4.2:" of "1-4.2".
std::string interfacePrefix(const std::string& name)
{
    return isRootHub(name) ? name.substr(3) + "-0:" : name + ':';
}

// Names come in natural order, so that the first interface of a device is the first that has its prefix.
std::map<std::string, std::string, std::less<>> firstInterfaces(const std::vector<std::string>& names)
{
    std::map<std::string, std::string, std::less<>> first;
    for (const std::string& name : names)
        if (const size_t colon = name.find(':'); colon != std::string::npos)
            first.try_emplace(name.substr(0, colon + 1), kDevices + name + '/');
    return first;
}

std::vector<UsbDevice> readDevices(const Root& root)
{
    const std::vector<std::string> names = root.list(kDevices);
    const auto interfaces = firstInterfaces(names);
    std::vector<UsbDevice> devices;
    for (const std::string& name : names) {
        if (name.find(':') != std::string::npos)
            continue;
        UsbDevice device{name, kDevices + name + '/', {}, {}, {}, {}};
        if (const auto found = interfaces.find(interfacePrefix(name)); found != interfaces.end())
            device.interface = found->second;
        device.vendor = usbNumber(root, device.folder + "idVendor");
        device.product = usbNumber(root, device.folder + "idProduct");
        device.deviceClass = usbNumber(root, device.folder + "bDeviceClass");
        devices.push_back(std::move(device));
    }
    return devices;
}

PciNames readNames(const Root& root, const std::vector<UsbDevice>& devices)
{
    PciNames names(PciNames::kUsbFiles);
    for (const UsbDevice& device : devices)
        if (device.vendor && device.product)
            names.want(static_cast<uint32_t>(*device.vendor), static_cast<uint32_t>(*device.product));
    names.read(root);
    return names;
}

// The bus's controller is what its root hub hangs below: a PCI function by its address, another one by the hub's name.
MaybeFact hostController(const Root& root, std::string_view name)
{
    const std::string bus(isRootHub(name) ? name.substr(3) : name.substr(0, name.find('-')));
    const std::string hub = kDevices + ("usb" + bus);
    const std::string path = root.realPath(hub).value_or("");
    const std::string parent = path.substr(0, path.rfind('/'));
    if (!parent.empty() && root.linkName(parent + "/subsystem") == "pci")
        return Fact{parent.substr(parent.rfind('/') + 1), hub};
    return root.fact(hub + "/product");
}

// The hub that a device is plugged into; empty of a root hub.
std::string parentOf(std::string_view name)
{
    if (isRootHub(name))
        return "";
    const size_t dot = name.rfind('.');
    return std::string(dot != std::string_view::npos ? name.substr(0, dot)
                                                     : "usb" + std::string(name.substr(0, name.find('-'))));
}

void addPlace(const Root& root, const UsbDevice& device, RowBuilder& row)
{
    row.text(USB_DEVICE_HOST_CONTROLLER, hostController(root, device.name));
    row.text(USB_DEVICE_DEVICE_ADDRESS, root.fact(device.folder + "devnum"));
    if (const MaybeFact path = root.fact(device.folder + "devpath"))
        row.text(USB_DEVICE_PORT_NUMBER, path->value.substr(path->value.rfind('.') + 1), path->source);
    if (const std::string parent = parentOf(device.name); !parent.empty())
        row.text(USB_DEVICE_PARENT_ADDRESS, root.fact(kDevices + parent + "/devnum"));
    row.text(USB_DEVICE_BUS_PATH, device.name, kDevices);
}

// A device of class 0 leaves its class to its interfaces.
void addClass(const Root& root, const UsbDevice& device, RowBuilder& row)
{
    const bool ofInterface = device.deviceClass == 0 && !device.interface.empty();
    const std::string classPath = ofInterface ? device.interface + "bInterfaceClass" : device.folder + "bDeviceClass";
    const std::string subPath =
        ofInterface ? device.interface + "bInterfaceSubClass" : device.folder + "bDeviceSubClass";
    row.number(USB_DEVICE_DEVICE_CLASS, usbNumber(root, classPath), classPath);
    row.number(USB_DEVICE_DEVICE_SUBCLASS, usbNumber(root, subPath), subPath);
    if (device.deviceClass)
        row.number(USB_DEVICE_IS_HUB, *device.deviceClass == kHubClass ? 1 : 0, device.folder + "bDeviceClass");
    const std::string ports = device.folder + "maxchild";
    row.number(USB_DEVICE_NUMBER_OF_PORTS, root.number(ports), ports);
}

// Megabits a second: "480", "1.5".
std::optional<double> speedOf(const Root& root, const std::string& path)
{
    const std::string line = root.line(path).value_or("");
    double speed = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), speed, std::chars_format::fixed);
    const bool isNumber = !line.empty() && error == std::errc() && end == line.data() + line.size();
    return isNumber ? std::optional(speed) : std::nullopt;
}

// What the device says of itself, else its ids' names.
void addNames(const Root& root, const UsbDevice& device, const PciNames& names, RowBuilder& row)
{
    row.number(USB_DEVICE_VENDOR_ID, device.vendor, device.folder + "idVendor");
    row.number(USB_DEVICE_PRODUCT_ID, device.product, device.folder + "idProduct");
    const auto vendorId = static_cast<uint32_t>(device.vendor.value_or(0));
    const auto productId = static_cast<uint32_t>(device.product.value_or(0));
    const std::string vendor = device.vendor ? names.vendor(vendorId) : "";
    const std::string product = device.vendor && device.product ? names.device(vendorId, productId) : "";
    row.text(USB_DEVICE_VENDOR_NAME, vendor, names.source());
    row.text(USB_DEVICE_MANUFACTURER, vendor, names.source());
    row.text(USB_DEVICE_MANUFACTURER, root.fact(device.folder + "manufacturer"));
    row.text(USB_DEVICE_PRODUCT, product, names.source());
    row.text(USB_DEVICE_PRODUCT, root.fact(device.folder + "product"));
}

void addIdentity(const Root& root, const UsbDevice& device, RowBuilder& row)
{
    std::string identity;
    for (const char* name : {"idVendor", "idProduct", "serial"})
        identity += root.line(device.folder + name).value_or("");
    row.text(USB_DEVICE_ID, md5(identity + device.name), "");
    row.text(USB_DEVICE_SERIAL_NUMBER, root.fact(device.folder + "serial"));
}

RowBuilder deviceRow(const Root& root, const UsbDevice& device, const PciNames& names)
{
    RowBuilder row(GROUP_USB_DEVICE);
    addPlace(root, device, row);
    row.text(USB_DEVICE_USB_VERSION, root.fact(device.folder + "version"));
    addClass(root, device, row);
    addNames(root, device, names, row);
    addIdentity(root, device, row);
    row.real(USB_DEVICE_SPEED, speedOf(root, device.folder + "speed"), device.folder + "speed");
    for (const std::string& folder : {device.folder, device.interface})
        if (!folder.empty())
            row.text(USB_DEVICE_DRIVER, root.linkName(folder + "driver"), folder + "driver");
    return row;
}
} // namespace

void collectUSBDevice(const Machine& machine, Collection& collection)
{
    const std::vector<UsbDevice> devices = readDevices(machine.root);
    const PciNames names = readNames(machine.root, devices);
    uint64_t index = 0;
    for (const UsbDevice& device : devices) {
        RowBuilder row = deviceRow(machine.root, device, names);
        row.number(USB_DEVICE_INDEX, ++index, kDevices);
        collection.add(std::move(row));
    }
}
} // namespace host
