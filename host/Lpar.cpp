// Lpar: what of a larger machine this one has. Partitioned platforms tell it in files of their own.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/firmware/FirmwareFacts.h"
#include "host/processor/Topology.h"
#include "host/system/SystemFiles.h"
#include "host/system/Virtualization.h"
#include "host/text/NumberList.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kPower = "/proc/ppc64/lparcfg";
constexpr const char* kOnline = "/sys/devices/system/cpu/online";

void addPower(std::string_view text, RowBuilder& row)
{
    std::string_view line;
    while (report::takeLine(text, line)) {
        const auto [key, value] = report::keyValue(line, '=');
        if (key == "partition_id")
            row.text(LPAR_ID, value, kPower);
        else if (key == "pool")
            row.text(LPAR_SHAREDPOOL_ID, value, kPower);
        else if (key == "pool_capacity")
            if (const std::optional<uint64_t> hundredths = report::parseNumber(value))
                row.real(LPAR_SHAREDPOOL_CAPACITY, static_cast<double>(*hundredths) / 100, kPower);
    }
}

// A virtual machine is known by the UUID that its host gave it, without separators to fit its attribute; else by its
// own id.
void addVirtualMachine(const Machine& machine, Notes& notes, RowBuilder& row)
{
    if (!hypervisorOf(machine) && !containerOf(machine))
        return;
    if (const MaybeFact uuid = FirmwareFacts(machine.root, notes).rawUuid())
        row.text(LPAR_ID, *uuid);
    else
        row.text(LPAR_ID, machineId(machine.root));
}

size_t coresOnline(const Root& root)
{
    size_t cores = 0;
    for (const auto& [id, package] : readPackages(root))
        cores += package.cores.size();
    return cores;
}
} // namespace

void collectLpar(const Machine& machine, Collection& collection)
{
    RowBuilder row(GROUP_LPAR);
    if (const std::optional<std::string> text = machine.root.read(kPower))
        addPower(*text, row);
    else
        addVirtualMachine(machine, collection.notes(), row);
    if (const size_t cores = coresOnline(machine.root))
        row.real(LPAR_NODE_CAPACITY, static_cast<double>(cores), kOnline);
    if (const MaybeFact online = machine.root.fact(kOnline))
        row.real(LPAR_LPAR_CAPACITY, static_cast<double>(countOfList(online->value)), online->source);
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
