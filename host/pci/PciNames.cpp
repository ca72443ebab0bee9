#include "host/pci/PciNames.h"

#include "host/Root.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr const char* kPciPaths[] = {"/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids", "/usr/share/pci.ids"};
constexpr const char* kUsbPaths[] = {"/usr/share/misc/usb.ids", "/usr/share/hwdata/usb.ids", "/usr/share/usb.ids",
                                     "/var/lib/usbutils/usb.ids"};

// A line's number and name: "8086  Intel Corporation", "\t1237  440FX", "C 03  Display controller".
struct NameLine {
    size_t depth = 0; // tabs before it
    bool isClass = false;
    std::optional<uint32_t> number;
    std::string_view name;
};

NameLine parseLine(std::string_view line)
{
    NameLine parsed;
    parsed.depth = std::min(line.find_first_not_of('\t'), line.size());
    line.remove_prefix(parsed.depth);
    parsed.isClass = parsed.depth == 0 && line.starts_with("C ");
    if (parsed.isClass)
        line.remove_prefix(2);
    const size_t end = std::min(line.find(' '), line.size());
    parsed.number = report::parseNumber<uint16_t>(line.substr(0, end), 16);
    parsed.name = report::trimmed(line.substr(end));
    return parsed;
}

uint32_t joined(uint32_t high, uint32_t low, int bits)
{
    return high << bits | low;
}

std::string nameIn(const std::map<uint32_t, std::string>& names, uint32_t number)
{
    const auto found = names.find(number);
    return found != names.end() ? found->second : std::string();
}

void fill(std::map<uint32_t, std::string>& names, uint32_t number, std::string_view name)
{
    if (const auto found = names.find(number); found != names.end())
        found->second = name;
}
} // namespace

const std::span<const char* const> PciNames::kPciFiles = kPciPaths;
const std::span<const char* const> PciNames::kUsbFiles = kUsbPaths;

void PciNames::want(uint32_t vendor, uint32_t device)
{
    vendors_.try_emplace(vendor);
    devices_.try_emplace(joined(vendor, device, 16));
}

void PciNames::wantClass(uint32_t classId)
{
    bases_.try_emplace(classId >> 16);
    subclasses_.try_emplace(classId >> 8);
}

bool PciNames::isWanted(std::string_view line)
{
    // Nearly all of the tens of thousands of lines: devices of other vendors, subsystems.
    if (line.starts_with('\t') && (!inWanted_ || line.starts_with("\t\t")))
        return false;
    const NameLine parsed = parseLine(line);
    if (!parsed.number || parsed.depth > 1)
        return false;
    if (parsed.depth == 0) {
        inClasses_ = parsed.isClass;
        parent_ = *parsed.number;
        inWanted_ = (inClasses_ ? bases_ : vendors_).count(parent_) != 0;
        return inWanted_;
    }
    if (!inWanted_)
        return false;
    return inClasses_ ? subclasses_.count(joined(parent_, *parsed.number, 8)) != 0
                      : devices_.count(joined(parent_, *parsed.number, 16)) != 0;
}

void PciNames::read(const Root& root)
{
    for (const char* path : files_) {
        const auto lines = root.lines(path, [this](std::string_view line) { return isWanted(line); });
        if (!lines)
            continue;
        source_ = path;
        parse(*lines);
        return;
    }
}

void PciNames::parse(const std::vector<std::string>& lines)
{
    bool inClasses = false;
    std::optional<uint32_t> parent;
    for (const std::string& line : lines) {
        const NameLine parsed = parseLine(line);
        if (!parsed.number || parsed.depth > 1)
            continue; // subsystems and interfaces are not told
        if (parsed.depth == 0) {
            inClasses = parsed.isClass;
            parent = *parsed.number;
            fill(inClasses ? bases_ : vendors_, *parent, parsed.name);
        } else if (!parent) {
            continue;
        } else if (inClasses && *parsed.number <= 0xFF) {
            fill(subclasses_, joined(*parent, *parsed.number, 8), parsed.name);
        } else if (!inClasses) {
            fill(devices_, joined(*parent, *parsed.number, 16), parsed.name);
        }
    }
}

std::string PciNames::vendor(uint32_t vendor) const
{
    return nameIn(vendors_, vendor);
}

std::string PciNames::device(uint32_t vendor, uint32_t device) const
{
    return nameIn(devices_, joined(vendor, device, 16));
}

std::string PciNames::className(uint32_t classId) const
{
    const std::string subclass = nameIn(subclasses_, classId >> 8);
    return subclass.empty() ? nameIn(bases_, classId >> 16) : subclass;
}
} // namespace host
