// Modem: a row a device: of mobile networks, of telephone lines on USB (CDC ACM) and on PCI. One with several
// interfaces is one modem.

#include <algorithm>

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "host/pci/PciNames.h"
#include "host/text/DevicePath.h"
#include "host/usb/UsbNumber.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kLinks = "/sys/class/net/";
constexpr const char* kTerminals = "/sys/class/tty/";
constexpr const char* kFunctions = "/sys/bus/pci/devices/";

// One device and the interfaces that the kernel has of it.
struct ModemDevice {
    std::string folder; // real path, of a USB device or a PCI function
    bool isUsb = false;
    std::string link; // "wwan0"
    std::string port; // "ttyACM0"
    std::optional<uint64_t> vendor, product;
};

// The USB device or the PCI function that an interface is of; its ids are absent when there is none.
ModemDevice deviceAbove(const Root& root, const std::string& path)
{
    for (const std::string& ancestor : ancestorsOf(path)) {
        if (const std::optional<uint64_t> vendor = usbNumber(root, ancestor + "/idVendor"))
            return {ancestor, true, "", "", vendor, usbNumber(root, ancestor + "/idProduct")};
        if (root.linkName(ancestor + "/subsystem") == "pci")
            return {ancestor, false, "", "", root.number(ancestor + "/vendor"), root.number(ancestor + "/device")};
    }
    return {};
}

// The modem that an interface is of, which is new when it is the first one.
ModemDevice* modemAbove(const Root& root, const std::string& path, std::vector<ModemDevice>& modems)
{
    ModemDevice device = deviceAbove(root, path);
    if (device.folder.empty())
        return nullptr;
    const auto found = std::find_if(modems.begin(), modems.end(),
                                    [&](const ModemDevice& modem) { return modem.folder == device.folder; });
    return found != modems.end() ? &*found : &modems.emplace_back(std::move(device));
}

void addLinks(const Root& root, std::vector<ModemDevice>& modems)
{
    for (const std::string& name : root.list(kLinks)) {
        const std::optional<std::string> device = root.realPath(kLinks + name + "/device");
        if (!name.starts_with("wwan") || !device)
            continue;
        ModemDevice* modem = modemAbove(root, *device, modems);
        if (modem != nullptr && modem->link.empty())
            modem->link = name;
    }
}

// An interface of the Abstract Control Model (CDC PSTN 1.2); many a board that is no modem has one too, and says that
// no commands are understood there.
bool takesCommands(const Root& root, const std::string& device)
{
    constexpr uint64_t kCommunication = 0x02, kAbstractControl = 0x02, kNoCommands = 0x00;
    return usbNumber(root, device + "/bInterfaceClass") == kCommunication &&
           usbNumber(root, device + "/bInterfaceSubClass") == kAbstractControl &&
           usbNumber(root, device + "/bInterfaceProtocol") != kNoCommands;
}

bool isModemFunction(const Root& root, const std::string& device)
{
    constexpr uint64_t kModemClass = 0x0703;
    return root.number(device + "/class").value_or(0) >> 8 == kModemClass;
}

void addPorts(const Root& root, std::vector<ModemDevice>& modems)
{
    for (const std::string& name : root.list(kTerminals)) {
        const std::optional<std::string> device = root.realPath(kTerminals + name + "/device");
        if (!device || !(name.starts_with("ttyACM") ? takesCommands(root, *device) : isModemFunction(root, *device)))
            continue;
        ModemDevice* modem = modemAbove(root, *device, modems);
        if (modem != nullptr && modem->port.empty())
            modem->port = name;
    }
}

void addFunctions(const Root& root, std::vector<ModemDevice>& modems)
{
    for (const std::string& slot : root.list(kFunctions))
        if (isModemFunction(root, kFunctions + slot))
            modemAbove(root, root.realPath(kFunctions + slot).value_or(""), modems);
}

PciNames readNames(const Root& root, const std::vector<ModemDevice>& modems, bool isUsb)
{
    PciNames names(isUsb ? PciNames::kUsbFiles : PciNames::kPciFiles);
    bool isWanted = false;
    for (const ModemDevice& modem : modems)
        if (modem.isUsb == isUsb && modem.vendor && modem.product) {
            names.want(static_cast<uint32_t>(*modem.vendor), static_cast<uint32_t>(*modem.product));
            isWanted = true;
        }
    if (isWanted)
        names.read(root);
    return names;
}

// What a USB device says of itself, else what its ids are called.
void addNames(const Root& root, const ModemDevice& modem, const PciNames& names, RowBuilder& row)
{
    const auto vendor = static_cast<uint32_t>(modem.vendor.value_or(0));
    const auto product = static_cast<uint32_t>(modem.product.value_or(0));
    row.text(MODEM_MANUFACTURER, modem.vendor ? names.vendor(vendor) : "", names.source());
    row.text(MODEM_DESCRIPTION, modem.vendor && modem.product ? names.device(vendor, product) : "", names.source());
    if (!modem.isUsb)
        return;
    row.text(MODEM_MANUFACTURER, root.fact(modem.folder + "/manufacturer"));
    row.text(MODEM_DESCRIPTION, root.fact(modem.folder + "/product"));
}

// Cards within the case are on USB too, at ports that nothing can be plugged into.
const char* typeOf(const Root& root, const ModemDevice& modem)
{
    const bool isFixed = !modem.isUsb || root.line(modem.folder + "/removable") == "fixed";
    return isFixed ? "Internal Modem" : "External Modem";
}

void addId(RowBuilder& row)
{
    std::string identity;
    for (const uint32_t attribute : std::initializer_list<uint32_t>{MODEM_DESCRIPTION, MODEM_MANUFACTURER, MODEM_PORT})
        if (const report::Value* value = row.row().find(attribute))
            identity += std::get<std::string>(value->content) + '\n';
    row.text(MODEM_ID, md5(identity), "");
}

RowBuilder modemRow(const Root& root, const ModemDevice& modem, const PciNames& names)
{
    const bool hasInterface = !modem.link.empty() || !modem.port.empty();
    const std::string interface = modem.link.empty() ? modem.port : modem.link;
    const std::string folder = (modem.link.empty() ? kTerminals : kLinks) + interface;
    const std::string driver = (hasInterface ? folder + "/device" : modem.folder) + "/driver";
    RowBuilder row(GROUP_MODEM);
    addNames(root, modem, names, row);
    row.text(MODEM_MODEM_TYPE, typeOf(root, modem), modem.folder);
    row.text(MODEM_PORT, modem.port, kTerminals);
    row.text(MODEM_INTERFACE, interface, folder);
    row.text(MODEM_DRIVER, root.linkName(driver), driver);
    addId(row);
    return row;
}
} // namespace

void collectModem(const Machine& machine, Collection& collection)
{
    std::vector<ModemDevice> modems;
    addLinks(machine.root, modems);
    addPorts(machine.root, modems);
    addFunctions(machine.root, modems);
    const PciNames usbNames = readNames(machine.root, modems, true);
    const PciNames pciNames = readNames(machine.root, modems, false);
    uint64_t index = 0;
    for (const ModemDevice& modem : modems) {
        RowBuilder row = modemRow(machine.root, modem, modem.isUsb ? usbNames : pciNames);
        row.number(MODEM_INDEX, ++index, modem.folder);
        collection.add(std::move(row));
    }
}
} // namespace host
