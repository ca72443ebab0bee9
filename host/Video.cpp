// Video: a row an adapter: PCI functions of the display class, and cards of the kernel's display layer that are none.

#include <algorithm>

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "host/display/DisplayCards.h"
#include "host/pci/PciNames.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kFunctions = "/sys/bus/pci/devices/";
constexpr const char* kFrameBuffers = "/sys/class/graphics/";

// One adapter and what its row is made of.
struct Adapter {
    std::string address; // "0000:00:02.0"
    std::string device;  // its real path
    std::optional<uint64_t> pciClass, vendor, product;
    std::vector<const DisplayCard*> cards;
};

// The memory that the kernel shows pictures from, and what it belongs to.
struct FrameBuffer {
    std::string folder; // with a slash at its end
    std::string device; // real path
};

std::vector<Adapter> readFunctions(const Root& root)
{
    std::vector<Adapter> adapters;
    for (const std::string& slot : root.list(kFunctions)) {
        const std::string folder = kFunctions + slot;
        const std::optional<uint64_t> pciClass = root.number(folder + "/class");
        if (pciClass && isDisplayClass(*pciClass))
            adapters.push_back({slot,
                                root.realPath(folder).value_or(folder),
                                pciClass,
                                root.number(folder + "/vendor"),
                                root.number(folder + "/device"),
                                {}});
    }
    return adapters;
}

// Of a machine with PCI adapters the picture that its firmware left is one of theirs, and no card of its own.
bool isFirmwarePicture(const Root& root, const std::string& device)
{
    return root.linkName(device + "/driver") == "simple-framebuffer";
}

std::vector<Adapter> readAdapters(const Root& root, const std::vector<DisplayCard>& cards)
{
    std::vector<Adapter> adapters = readFunctions(root);
    const bool hasFunctions = !adapters.empty();
    for (const DisplayCard& card : cards) {
        auto found = std::find_if(adapters.begin(), adapters.end(),
                                  [&](const Adapter& adapter) { return adapter.device == card.device; });
        if (found == adapters.end() && hasFunctions && isFirmwarePicture(root, card.device))
            continue;
        if (found == adapters.end())
            found = adapters.insert(found, {card.address(), card.device, {}, {}, {}, {}});
        found->cards.push_back(&card);
    }
    return adapters;
}

PciNames readNames(const Root& root, const std::vector<Adapter>& adapters)
{
    PciNames names;
    for (const Adapter& adapter : adapters)
        if (adapter.vendor && adapter.product)
            names.want(static_cast<uint32_t>(*adapter.vendor), static_cast<uint32_t>(*adapter.product));
    names.read(root);
    return names;
}

std::vector<FrameBuffer> readFrameBuffers(const Root& root)
{
    std::vector<FrameBuffer> buffers;
    for (const std::string& name : root.list(kFrameBuffers))
        if (name.starts_with("fb") && report::parseNumber(name.substr(2)))
            buffers.push_back(
                {kFrameBuffers + name + '/', root.realPath(kFrameBuffers + name + "/device").value_or("")});
    return buffers;
}

bool isAtOrBelow(const std::string& path, const std::string& folder)
{
    return path == folder || path.starts_with(folder + '/');
}

// The adapter's own, else on the one that the machine started with the one that its firmware set up.
const FrameBuffer* bufferOf(const Root& root, const Adapter& adapter, const std::vector<FrameBuffer>& buffers)
{
    constexpr std::string_view kFirmwares[] = {"efi-framebuffer", "vesa-framebuffer", "simple-framebuffer"};
    for (const FrameBuffer& buffer : buffers)
        if (isAtOrBelow(buffer.device, adapter.device))
            return &buffer;
    if (root.number(adapter.device + "/boot_vga") != 1)
        return nullptr;
    for (const FrameBuffer& buffer : buffers)
        for (const std::string_view firmware : kFirmwares)
            if (buffer.device.substr(buffer.device.rfind('/') + 1).starts_with(firmware))
                return &buffer;
    return nullptr;
}

// "1280,800" and "1920x1080i".
void addSize(std::string_view text, char separator, const std::string& source, RowBuilder& row)
{
    const auto [width, height] = report::keyValue(text, separator);
    const std::optional<uint64_t> columns = report::parseNumber(width);
    const std::optional<uint64_t> lines = report::leadingNumber(height);
    if (!columns || !lines || *columns == 0 || *lines == 0)
        return;
    row.number(VIDEO_HORIZONTAL, columns, source);
    row.number(VIDEO_VERTICAL, lines, source);
}

void addPicture(const Root& root, const Adapter& adapter, const FrameBuffer* buffer, RowBuilder& row)
{
    constexpr uint64_t kMostDepth = 24; // bits beyond these are no colours
    if (buffer != nullptr) {
        const std::string size = buffer->folder + "virtual_size", depth = buffer->folder + "bits_per_pixel";
        addSize(root.line(size).value_or(""), ',', size, row);
        if (const std::optional<uint64_t> bits = root.number(depth); bits && *bits != 0)
            row.number(VIDEO_COLORS, uint64_t{1} << std::min(*bits, kMostDepth), depth);
    }
    for (const DisplayCard* card : adapter.cards)
        for (const std::string& connector : card->connectors) {
            const std::string modes = card->connectorFolder(connector) + "modes";
            if (!row.has(VIDEO_HORIZONTAL) && root.line(card->connectorFolder(connector) + "status") == "connected")
                addSize(root.line(modes).value_or(""), 'x', modes, row);
        }
}

// A line a range: first and last address and the kernel's flags (linux/ioport.h). Absent when it is no range of memory
// that may be read ahead.
std::optional<uint64_t> prefetchableBytes(std::string_view line)
{
    constexpr uint64_t kMemory = 0x200, kPrefetchable = 0x2000;
    uint64_t numbers[3] = {};
    const std::vector<std::string_view> words = report::words(line);
    if (words.size() != std::size(numbers))
        return std::nullopt;
    for (size_t i = 0; i < words.size(); ++i) {
        const bool isHexadecimal = words[i].starts_with("0x");
        const std::optional<uint64_t> number =
            isHexadecimal ? report::parseNumber(words[i].substr(2), 16) : std::nullopt;
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
    }
    const auto [first, last, flags] = numbers;
    const bool isWanted = (flags & kMemory) != 0 && (flags & kPrefetchable) != 0 && last > first;
    return isWanted ? std::optional(last - first + 1) : std::nullopt;
}

void addMemory(const Root& root, const Adapter& adapter, RowBuilder& row)
{
    constexpr size_t kRanges = 6; // what follows is the adapter's ROM
    constexpr uint64_t kKilobyte = 1024;
    const std::string total = adapter.device + "/mem_info_vram_total", ranges = adapter.device + "/resource";
    if (const std::optional<uint64_t> bytes = root.number(total)) {
        row.number(VIDEO_MEMORY, *bytes / kKilobyte, total);
        return;
    }
    const std::string text = adapter.pciClass ? root.read(ranges, Root::kLineLimit).value_or("") : "";
    std::string_view rest = text;
    std::string_view line;
    for (size_t i = 0; i < kRanges && !row.has(VIDEO_MEMORY) && report::takeLine(rest, line); ++i)
        if (const std::optional<uint64_t> bytes = prefetchableBytes(line))
            row.number(VIDEO_MEMORY, *bytes / kKilobyte, ranges);
}

std::string idsOf(const Adapter& adapter)
{
    char text[32] = "";
    if (adapter.vendor && adapter.product)
        snprintf(text, sizeof text, "%04x:%04x", static_cast<unsigned>(*adapter.vendor),
                 static_cast<unsigned>(*adapter.product));
    return text;
}

void addNames(const Root& root, const Adapter& adapter, const PciNames& names, RowBuilder& row)
{
    const auto vendorId = static_cast<uint32_t>(adapter.vendor.value_or(0));
    const bool hasIds = adapter.vendor && adapter.product;
    const std::string device = hasIds ? names.device(vendorId, static_cast<uint32_t>(*adapter.product)) : "";
    const std::string driver = adapter.device + "/driver";
    row.text(VIDEO_DRIVER, root.linkName(driver), driver);
    row.text(VIDEO_ADAPTER_NAME, root.linkName(driver), driver);
    if (!device.empty())
        row.text(VIDEO_ADAPTER_NAME, std::string(report::trimmed(names.vendor(vendorId) + ' ' + device)),
                 names.source());
    row.text(VIDEO_CHIP_TYPE, idsOf(adapter), adapter.device);
    row.text(VIDEO_CHIP_TYPE, device, names.source());
}

void addId(RowBuilder& row)
{
    std::string identity;
    for (const uint32_t attribute :
         std::initializer_list<uint32_t>{VIDEO_BUS_ADDRESS, VIDEO_ADAPTER_NAME, VIDEO_CHIP_TYPE})
        if (const report::Value* value = row.row().find(attribute))
            identity += std::get<std::string>(value->content) + '\n';
    row.text(VIDEO_ID, md5(identity), "");
}

void addConnectors(const Adapter& adapter, RowBuilder& row)
{
    std::string connectors;
    for (const DisplayCard* card : adapter.cards)
        for (const std::string& connector : card->connectors)
            connectors += (connectors.empty() ? "" : ",") + connector;
    row.text(VIDEO_CONNECTORS, connectors, "/sys/class/drm");
}

RowBuilder adapterRow(const Root& root, const Adapter& adapter, const PciNames& names,
                      const std::vector<FrameBuffer>& buffers)
{
    constexpr uint64_t kVgaClass = 0x0300;
    constexpr uint32_t kVga = 5; // Architecture
    RowBuilder row(GROUP_VIDEO);
    row.text(VIDEO_BUS_ADDRESS, adapter.address, adapter.device);
    if (adapter.pciClass && *adapter.pciClass >> 8 == kVgaClass)
        row.number(VIDEO_ARCHITECTURE, kVga, adapter.device + "/class");
    addNames(root, adapter, names, row);
    addPicture(root, adapter, bufferOf(root, adapter, buffers), row);
    addMemory(root, adapter, row);
    row.text(VIDEO_BIOS_VERSION, root.fact(adapter.device + "/vbios_version"));
    addConnectors(adapter, row);
    addId(row);
    return row;
}
} // namespace

void collectVideo(const Machine& machine, Collection& collection)
{
    const std::vector<DisplayCard> cards = readDisplayCards(machine.root);
    const std::vector<Adapter> adapters = readAdapters(machine.root, cards);
    if (adapters.empty())
        return;
    const PciNames names = readNames(machine.root, adapters);
    const std::vector<FrameBuffer> buffers = readFrameBuffers(machine.root);
    uint64_t index = 0;
    for (const Adapter& adapter : adapters) {
        RowBuilder row = adapterRow(machine.root, adapter, names, buffers);
        row.number(VIDEO_INDEX, ++index, kFunctions);
        collection.add(std::move(row));
    }
}
} // namespace host
