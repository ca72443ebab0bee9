#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
class Root;

/// Names of PCI or USB vendors, devices and classes from the machine's pci.ids or usb.ids, which have one form. The
/// file is read once for all that are wanted.
class PciNames
{
public:
    /// Where each of the two may lie, best first.
    static const std::span<const char*const> kPciFiles, kUsbFiles;

    explicit PciNames(std::span<const char* const> files = kPciFiles) : files_(files) {}

    /// Says that these names will be asked for.
    void want(uint32_t vendor, uint32_t device);
    void wantClass(uint32_t classId); // base class, subclass and interface: 0x030000

    /// Reads the names that are wanted.
    void read(const Root& root);

    /// Takes the lines of a pci.ids file.
    void parse(const std::vector<std::string>& lines);

    /// True when a line of the file names something wanted. Lines come in the file's order.
    bool isWanted(std::string_view line);

    // Names, empty where the file has none; the subclass's, else the base class's.
    std::string vendor(uint32_t vendor) const;
    std::string device(uint32_t vendor, uint32_t device) const;
    std::string className(uint32_t classId) const;

    /// The file that names came from.
    const std::string& source() const { return source_; }

private:
    std::span<const char* const> files_;
    std::map<uint32_t, std::string> vendors_, bases_;
    std::map<uint32_t, std::string> devices_;    // vendor and device in one number
    std::map<uint32_t, std::string> subclasses_; // base class and subclass in one number
    bool inClasses_ = false;                     // where isWanted() is in the file
    bool inWanted_ = false;
    uint32_t parent_ = 0;
    std::string source_;
};
} // namespace host
