// Processor: a row a package. Topology and caches from /sys, names and features from /proc/cpuinfo, sockets and clocks
// from the firmware's table, whose populated sockets stand in the packages' order.

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/firmware/FirmwareFacts.h"
#include "host/firmware/ProcessorSockets.h"
#include "host/processor/CpuInfo.h"
#include "host/processor/Topology.h"
#include "report/Text.h"
#include "report/Writer.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr std::string_view kTopology = "/sys/devices/system/cpu";

// Which bits of the feature word say Y of which attribute.
struct FeatureAttribute {
    uint32_t attribute;
    uint32_t bits;
};
constexpr FeatureAttribute kFeatures[] = {
    {PROCESSOR_FPU, 1U << 0},
    {PROCESSOR_VME, 1U << 1},
    {PROCESSOR_DEBUG_EXTENSION, 1U << 2},
    {PROCESSOR_PAGE_SIZE_EXTENSIONS, 1U << 3},
    {PROCESSOR_TIME_STAMP_COUNTER, 1U << 4},
    {PROCESSOR_MODEL_SPECIFIC_REGISTERS, 1U << 5},
    {PROCESSOR_PHYSICAL_ADDRESS_EXTENSIONS, 1U << 6},
    {PROCESSOR_MACHINE_CHECK_EXCEPTIONS, 1U << 7},
    {PROCESSOR_CMPXCHG8B, 1U << 8},
    {PROCESSOR_ON_CHIP_APIC, 1U << 9},
    {PROCESSOR_FAST_SYSTEM_CALL, 1U << 11},
    {PROCESSOR_MTRR, 1U << 12},
    {PROCESSOR_PAGE_GLOBAL_ENABLE, 1U << 13},
    {PROCESSOR_MACHINE_CHECK_ARCHITECTURE, 1U << 14},
    {PROCESSOR_CONDITIONAL_MOVE, 1U << 15},
    {PROCESSOR_PAGE_ATTRIBUTE_TABLE, 1U << 16},
    {PROCESSOR_PSE36, 1U << 17},
    {PROCESSOR_SERIAL_NUMBER_ENABLED, 1U << 18},
    {PROCESSOR_MMX, 1U << 23},
    {PROCESSOR_FXSR, 1U << 24},
    {PROCESSOR_SSE, 1U << 25 | 1U << 26},
};

std::string_view valueOf(const CpuInfo& lines, std::initializer_list<std::string_view> keys)
{
    for (const std::string_view key : keys)
        if (const auto found = lines.find(key); found != lines.end())
            return found->second;
    return {};
}

bool hasWord(std::string_view text, std::string_view word)
{
    for (const std::string_view candidate : report::words(text))
        if (candidate == word)
            return true;
    return false;
}

void addFeatures(std::string_view flags, RowBuilder& row)
{
    const std::optional<uint32_t> bits = featureBits(flags);
    if (!bits)
        return;
    row.number(PROCESSOR_CHIP_FEATURES, *bits & INT32_MAX, kCpuinfoPath);
    for (const FeatureAttribute& feature : kFeatures)
        row.text(feature.attribute, (*bits & feature.bits) != 0 ? "Y" : "N", kCpuinfoPath);
    row.text(PROCESSOR_3DNOW, hasWord(flags, "3dnow") ? "Y" : "N", kCpuinfoPath);
    if (hasWord(flags, "vmx"))
        row.text(PROCESSOR_VIRTUALIZATION, "VT-x", kCpuinfoPath);
    else if (hasWord(flags, "svm"))
        row.text(PROCESSOR_VIRTUALIZATION, "AMD-V", kCpuinfoPath);
}

void addCpuInfo(const CpuInfo& lines, RowBuilder& row)
{
    const std::string_view implementer = valueOf(lines, {"CPU implementer"});
    const char* const maker = implementerName(implementer);
    row.text(PROCESSOR_MANUFACTURER, valueOf(lines, {"vendor_id"}), kCpuinfoPath);
    if (maker != nullptr)
        row.text(PROCESSOR_MANUFACTURER, maker, kCpuinfoPath);
    row.text(PROCESSOR_MODEL_NAME, valueOf(lines, {"model name", "cpu model", "Processor", "cpu"}), kCpuinfoPath);
    row.number(PROCESSOR_CHIP_FAMILY, report::parseNumber(valueOf(lines, {"cpu family"})), kCpuinfoPath);
    row.number(PROCESSOR_CHIP_MODEL, report::parseNumber(valueOf(lines, {"model"})), kCpuinfoPath);
    row.number(PROCESSOR_CHIP_STEPPING, report::parseNumber(valueOf(lines, {"stepping"})), kCpuinfoPath);
    row.text(PROCESSOR_MICROCODE, valueOf(lines, {"microcode"}), kCpuinfoPath);
    row.text(PROCESSOR_CPU_MASK, valueOf(lines, {"microcode"}), kCpuinfoPath);
    row.text(PROCESSOR_CPU_IMPL, implementer, kCpuinfoPath);
    row.number(PROCESSOR_CURRENT_CLOCK_SPEED, report::leadingNumber(valueOf(lines, {"cpu MHz", "clock"})),
               kCpuinfoPath);
    row.text(PROCESSOR_FLAGS, valueOf(lines, {"flags", "Features"}), kCpuinfoPath);
    addFeatures(valueOf(lines, {"flags"}), row);
}

void addTopology(const Package& package, RowBuilder& row)
{
    const size_t threads = package.online.size() + package.offline.size();
    row.number(PROCESSOR_THREADS, threads, kTopology);
    row.number(PROCESSOR_ONLINE_THREADS, package.online.size(), kTopology);
    if (!package.cores.empty())
        row.number(PROCESSOR_CORES, package.cores.size(), kTopology);
    if (!package.cores.empty() && package.online.size() > package.cores.size())
        row.text(PROCESSOR_CPU_ENABLED, "H", kTopology);
    std::string nodes;
    for (const uint32_t node : package.nodes)
        nodes += (nodes.empty() ? "" : ",") + std::to_string(node);
    row.text(PROCESSOR_NUMA_NODES, nodes, "/sys/devices/system/node");
    if (!package.nodes.empty()) {
        row.number(PROCESSOR_BOARD, *package.nodes.begin(), "/sys/devices/system/node");
        row.number(PROCESSOR_MODULE, *package.nodes.begin(), "/sys/devices/system/node");
    }
}

void addSize(uint32_t attribute, uint64_t size, RowBuilder& row)
{
    if (size != 0)
        row.number(attribute, size, kTopology);
}

void addCaches(const CacheSizes& sizes, RowBuilder& row)
{
    addSize(PROCESSOR_L1D_CACHE, sizes.l1d, row);
    addSize(PROCESSOR_L1I_CACHE, sizes.l1i, row);
    addSize(PROCESSOR_L2_CACHE, sizes.l2, row);
    addSize(PROCESSOR_L3_CACHE, sizes.l3, row);
    if (sizes.largest >= 1024)
        row.text(PROCESSOR_ECACHE_MB, std::to_string(sizes.largest / 1024), kTopology);
}

// Frequencies of the package's first processor, in kHz where there is a driver.
void addFrequency(const Root& root, uint32_t processor, const char* name, uint32_t attribute, RowBuilder& row)
{
    const std::string path = processorPath(processor, std::string("cpufreq/") + name);
    if (const std::optional<uint64_t> kilohertz = root.number(path))
        row.number(attribute, *kilohertz / 1000, path);
}

void addFrequencies(const Root& root, const Package& package, RowBuilder& row)
{
    if (package.online.empty())
        return;
    const uint32_t first = package.online.front();
    addFrequency(root, first, "cpuinfo_min_freq", PROCESSOR_MINIMUM_FREQUENCY, row);
    addFrequency(root, first, "cpuinfo_max_freq", PROCESSOR_MAXIMUM_FREQUENCY, row);
    addFrequency(root, first, "cpuinfo_max_freq", PROCESSOR_MAX_CLOCK_SPEED, row);
    addFrequency(root, first, "scaling_cur_freq", PROCESSOR_CURRENT_CLOCK_SPEED, row);
}

// What the firmware knows better, or alone.
void addSocket(const ProcessorSocket& socket, RowBuilder& row)
{
    constexpr std::string_view kTable = FirmwareFacts::kTablePath;
    row.text(PROCESSOR_SOCKET_NAME, socket.socket, kTable);
    row.text(PROCESSOR_SERIAL_NUMBER, socket.serialNumber, kTable);
    row.number(PROCESSOR_FAMILY, socket.family, kTable);
    row.number(PROCESSOR_MAX_CLOCK_SPEED, socket.maximumSpeed, kTable);
    row.number(PROCESSOR_EXTERNAL_CLOCK_SPEED, socket.externalClock, kTable);
    if (!row.has(PROCESSOR_CURRENT_CLOCK_SPEED))
        row.number(PROCESSOR_CURRENT_CLOCK_SPEED, socket.currentSpeed, kTable);
    if (!row.has(PROCESSOR_MANUFACTURER))
        row.text(PROCESSOR_MANUFACTURER, socket.manufacturer, kTable);
    if (!row.has(PROCESSOR_MODEL_NAME))
        row.text(PROCESSOR_MODEL_NAME, socket.version, kTable);
    if (!row.has(PROCESSOR_CORES))
        row.number(PROCESSOR_CORES, socket.cores, kTable);
    if (!row.has(PROCESSOR_THREADS))
        row.number(PROCESSOR_THREADS, socket.threads, kTable);
    const report::Attribute* interface = report::findGroup(GROUP_PROCESSOR)->find(PROCESSOR_INTERFACE);
    if (const char* text = socket.upgrade ? report::enumText(interface->codeTexts, *socket.upgrade) : nullptr)
        row.text(PROCESSOR_INTERFACE, text, kTable);
}

constexpr uint32_t kIdentity[] = {
    PROCESSOR_MANUFACTURER,  PROCESSOR_MAX_CLOCK_SPEED, PROCESSOR_CURRENT_CLOCK_SPEED,
    PROCESSOR_CHIP_FAMILY,   PROCESSOR_CHIP_MODEL,      PROCESSOR_CHIP_STEPPING,
    PROCESSOR_CHIP_FEATURES, PROCESSOR_INTERFACE,       PROCESSOR_FAMILY,
};

// The digest of what tells one kind of processor from another, and of its place.
void addId(RowBuilder& row)
{
    std::string identity;
    for (const uint32_t attribute : kIdentity) {
        const report::Value* value = row.row().find(attribute);
        identity += value != nullptr ? report::valueText(*value) + "|" : "|";
    }
    row.text(PROCESSOR_ID, md5(identity), "");
}

// The package's number among all that the topology knows; the first where it knows none.
std::map<uint32_t, uint32_t> packageOfProcessor(const std::map<uint32_t, Package>& packages)
{
    std::map<uint32_t, uint32_t> packageOf;
    for (const auto& [id, package] : packages)
        for (const uint32_t processor : package.online)
            packageOf[processor] = id;
    return packageOf;
}

// The lines of each package's first processor.
std::map<uint32_t, CpuInfo> firstLines(std::string_view text, const std::map<uint32_t, Package>& packages)
{
    const std::map<uint32_t, uint32_t> packageOf = packageOfProcessor(packages);
    std::map<uint32_t, CpuInfo> first;
    forEachProcessor(text, [&](uint32_t number, const CpuInfo& lines) {
        const auto found = packageOf.find(number);
        first.emplace(found != packageOf.end() ? found->second : packages.begin()->first, lines);
    });
    return first;
}
} // namespace

void collectProcessor(const Machine& machine, Collection& collection)
{
    const Root& root = machine.root;
    const FirmwareFacts firmware(root, collection.notes());
    const std::vector<ProcessorSocket> sockets = processorSocketsOf(firmware.table());
    const std::string cpuinfo = root.read(kCpuinfoPath, kMostCpuinfo).value_or("");
    std::map<uint32_t, Package> packages = readPackages(root);
    if (packages.empty() && (!cpuinfo.empty() || !sockets.empty()))
        packages[0];
    if (packages.empty())
        return;
    std::map<uint32_t, CpuInfo> lines = firstLines(cpuinfo, packages);
    uint64_t index = 0;
    for (const auto& [id, package] : packages) {
        RowBuilder row(GROUP_PROCESSOR);
        row.number(PROCESSOR_INDEX, index + 1, kTopology);
        row.number(PROCESSOR_CPU_NUMBER, id, kTopology);
        addCpuInfo(lines[id], row);
        if (!package.online.empty())
            addTopology(package, row);
        addCaches(readCaches(root, package), row);
        addFrequencies(root, package, row);
        if (index < sockets.size())
            addSocket(sockets[index], row);
        addId(row);
        collection.add(std::move(row));
        ++index;
    }
}
} // namespace host
