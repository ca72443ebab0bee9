// Parallel Port: a row a port of the kernel's parport layer.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/text/Hexadecimal.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kPorts = "/proc/sys/dev/parport/";

// "888\t1912": the base address and that of its extended registers, in decimal.
std::string addressOf(const Root& root, const std::string& path)
{
    const std::string line = root.line(path).value_or("");
    const std::vector<std::string_view> words = report::words(line);
    const std::optional<uint64_t> base = words.empty() ? std::nullopt : report::parseNumber(words[0]);
    return base && *base != 0 ? hexadecimal(*base) : "";
}
} // namespace

void collectParallelPort(const Machine& machine, Collection& collection)
{
    uint64_t index = 0;
    for (const std::string& name : machine.root.list(kPorts)) {
        if (!name.starts_with("parport"))
            continue; // "default" is no port
        const std::string folder = kPorts + name + '/';
        RowBuilder row(GROUP_PARALLEL_PORT);
        row.number(PARALLEL_PORT_INDEX, ++index, kPorts);
        row.text(PARALLEL_PORT_NAME, name, kPorts);
        row.text(PARALLEL_PORT_ADDRESS, addressOf(machine.root, folder + "base-addr"), folder + "base-addr");
        row.number(PARALLEL_PORT_IRQ, machine.root.number(folder + "irq"), folder + "irq"); // -1 is none
        collection.add(std::move(row));
    }
}
} // namespace host
