#include "host/processor/Topology.h"

#include <algorithm>

#include "host/text/NumberList.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr const char* kProcessors = "/sys/devices/system/cpu/";
constexpr const char* kNodes = "/sys/devices/system/node/";

// The node of every processor.
std::map<uint32_t, uint32_t> readNodes(const Root& root)
{
    std::map<uint32_t, uint32_t> nodeOf;
    for (const std::string& name : root.list(kNodes)) {
        const auto node = name.starts_with("node") ? report::parseNumber<uint32_t>(name.substr(4)) : std::nullopt;
        if (!node)
            continue;
        for (const uint32_t processor : numbersOfList(root.line(kNodes + name + "/cpulist").value_or("")))
            nodeOf[processor] = *node;
    }
    return nodeOf;
}

std::vector<uint32_t> readList(const Root& root, const char* name)
{
    return numbersOfList(root.line(std::string(kProcessors) + name).value_or(""));
}

void addOnline(const Root& root, uint32_t processor, const std::map<uint32_t, uint32_t>& nodeOf,
               std::map<uint32_t, Package>& packages)
{
    const std::optional<uint64_t> id = root.number(processorPath(processor, "topology/physical_package_id"));
    Package& package = packages[static_cast<uint32_t>(std::min<uint64_t>(id.value_or(0), UINT32_MAX))];
    package.online.push_back(processor);
    std::optional<std::string> core = root.line(processorPath(processor, "topology/core_cpus_list"));
    if (!core) // before 5.3
        core = root.line(processorPath(processor, "topology/thread_siblings_list"));
    if (core)
        package.cores.insert(*core);
    if (const auto node = nodeOf.find(processor); node != nodeOf.end())
        package.nodes.insert(node->second);
}

// A processor that is off line has no topology; it belongs to the only package, or to the only one with processors in
// its node. Its node is the link that the kernel keeps beside its state.
void addOffline(const Root& root, uint32_t processor, std::map<uint32_t, Package>& packages)
{
    Package* owner = packages.size() == 1 ? &packages.begin()->second : nullptr;
    for (const std::string& name :
         packages.size() > 1 ? root.list(processorPath(processor, "")) : std::vector<std::string>()) {
        const auto node = name.starts_with("node") ? report::parseNumber<uint32_t>(name.substr(4)) : std::nullopt;
        if (!node)
            continue;
        for (auto& [id, package] : packages)
            if (package.nodes.count(*node) != 0)
                owner = owner == nullptr ? &package : owner;
    }
    if (owner != nullptr)
        owner->offline.push_back(processor);
}

// "512K", "32M"
uint64_t kilobytes(std::string_view size)
{
    const uint64_t number = report::leadingNumber(size).value_or(0);
    return !size.empty() && size.back() == 'M'   ? number * 1024
           : !size.empty() && size.back() == 'G' ? number * 1048576
                                                 : number;
}

void addCache(const Root& root, const std::string& folder, CacheSizes& sizes)
{
    const uint64_t level = root.number(folder + "level").value_or(0);
    const std::string type = root.line(folder + "type").value_or("");
    const uint64_t size = kilobytes(root.line(folder + "size").value_or(""));
    sizes.largest = std::max(sizes.largest, size);
    if (level == 1 && type == "Instruction")
        sizes.l1i += size;
    else if (level == 1)
        sizes.l1d += size;
    else if (level == 2)
        sizes.l2 += size;
    else if (level == 3)
        sizes.l3 += size;
}
} // namespace

std::string processorPath(uint32_t processor, std::string_view name)
{
    return kProcessors + ("cpu" + std::to_string(processor)) + '/' + std::string(name);
}

std::map<uint32_t, Package> readPackages(const Root& root)
{
    const std::map<uint32_t, uint32_t> nodeOf = readNodes(root);
    const std::vector<uint32_t> online = readList(root, "online");
    std::map<uint32_t, Package> packages;
    for (const uint32_t processor : online)
        addOnline(root, processor, nodeOf, packages);
    for (const uint32_t processor : readList(root, "present"))
        if (!std::binary_search(online.begin(), online.end(), processor))
            addOffline(root, processor, packages);
    return packages;
}

// Every cache is looked at once, through the first of the processors that share it.
CacheSizes readCaches(const Root& root, const Package& package)
{
    constexpr size_t kMostIndexes = 8;
    CacheSizes sizes;
    std::array<std::set<uint32_t>, kMostIndexes> seen;
    for (const uint32_t processor : package.online) {
        for (size_t index = 0; index < kMostIndexes; ++index) {
            if (seen[index].count(processor) != 0)
                continue;
            const std::string folder = processorPath(processor, "cache/index" + std::to_string(index) + '/');
            const std::optional<std::string> shared = root.line(folder + "shared_cpu_list");
            if (!shared)
                break; // the kernel numbers them without gaps
            const std::vector<uint32_t> sharers = numbersOfList(*shared);
            seen[index].insert(sharers.begin(), sharers.end());
            addCache(root, folder, sizes);
        }
    }
    return sizes;
}
} // namespace host
