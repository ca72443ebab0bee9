// Serial Port: a row a port that has hardware: UARTs that the kernel found, and adapters on USB.

#include <array>

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/text/Hexadecimal.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kTerminals = "/sys/class/tty/";

// Names of the kernel's port types (serial_core.h), by number; types of single boards have none here.
constexpr const char* kUartTypes[] = {
    nullptr,  "8250",     "16450",  "16550",     "16550A", "Cirrus",   "16650",    "16650V2",
    "16750",  "Startech", "16C950", "16654",     "16850",  "RSA",      "NS16550A", "XScale",
    "RM9000", "OCTEON",   "AR7",    "U6_16550A", "Tegra",  "XR17D15X", "LPC3220",
};
constexpr uint64_t kPl011 = 32;

std::string uartType(uint64_t type)
{
    if (type == kPl011)
        return "PL011";
    return type < std::size(kUartTypes) ? kUartTypes[type] : std::to_string(type);
}

// Both are written as "0x3F8"; 0 says that there is none.
MaybeFact addressOf(const Root& root, const std::string& folder)
{
    for (const char* name : {"port", "iomem_base"})
        if (const std::optional<uint64_t> address = root.number(folder + name); address && *address != 0)
            return Fact{hexadecimal(*address), folder + name};
    return std::nullopt;
}

// The kernel makes names for ports that may be plugged in: their type is 0. Consoles have no device.
bool hasHardware(const Root& root, const std::string& folder, std::optional<uint64_t> type)
{
    return root.exists(folder + "device") && type != 0;
}

RowBuilder portRow(const Root& root, const std::string& name, const std::string& folder, std::optional<uint64_t> type)
{
    RowBuilder row(GROUP_SERIAL_PORT);
    row.text(SERIAL_PORT_NAME, name, kTerminals);
    row.text(SERIAL_PORT_ADDRESS, addressOf(root, folder));
    const std::optional<uint64_t> irq = root.number(folder + "irq");
    if (irq != 0) // polled
        row.number(SERIAL_PORT_IRQ, irq, folder + "irq");
    if (type)
        row.text(SERIAL_PORT_UART_TYPE, uartType(*type), folder + "type");
    return row;
}
} // namespace

void collectSerialPort(const Machine& machine, Collection& collection)
{
    uint64_t index = 0;
    for (const std::string& name : machine.root.list(kTerminals)) {
        const std::string folder = kTerminals + name + '/';
        const std::optional<uint64_t> type = machine.root.number(folder + "type");
        if (!hasHardware(machine.root, folder, type))
            continue;
        RowBuilder row = portRow(machine.root, name, folder, type);
        row.number(SERIAL_PORT_INDEX, ++index, kTerminals);
        collection.add(std::move(row));
    }
}
} // namespace host
