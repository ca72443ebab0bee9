// NUMA Node: memory, processors and distances of every node.

#include "host/Collectors.h"
#include "host/Root.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kFolder = "/sys/devices/system/node/";
constexpr std::string_view kPrefix = "node";

// "Node 0 MemTotal:       65811396 kB"
std::optional<uint64_t> totalMemory(std::string_view text)
{
    std::string_view line;
    while (report::takeLine(text, line)) {
        const std::vector<std::string_view> words = report::words(line);
        if (words.size() >= 4 && words[2] == "MemTotal:")
            return report::parseNumber(words[3]);
    }
    return std::nullopt;
}
} // namespace

void collectNUMANode(const Machine& machine, Collection& collection)
{
    for (const std::string& name : machine.root.list(kFolder)) {
        const std::string_view digits = name.starts_with(kPrefix) ? std::string_view(name).substr(kPrefix.size()) : "";
        const std::optional<uint32_t> node = report::parseNumber<uint32_t>(digits);
        if (!node)
            continue;
        const std::string folder = kFolder + name;
        const std::string meminfo = folder + "/meminfo";
        RowBuilder row(GROUP_NUMA_NODE);
        row.number(NUMA_NODE_NODE, *node, folder);
        row.number(NUMA_NODE_TOTAL_MEMORY, totalMemory(machine.root.read(meminfo).value_or("")), meminfo);
        row.text(NUMA_NODE_PROCESSORS, machine.root.fact(folder + "/cpulist"));
        row.text(NUMA_NODE_DISTANCES, machine.root.fact(folder + "/distance"));
        collection.add(std::move(row));
    }
}
} // namespace host
