#include "host/firmware/StructureTable.h"

#include "report/Text.h"

namespace host
{
namespace
{
constexpr size_t kHeaderLength = 4; // type, length, handle

uint8_t byteAt(std::string_view bytes, size_t offset)
{
    return static_cast<uint8_t>(bytes[offset]);
}

// Where the version stands in an entry point (DSP0134, 5.2.1 and 5.2.2; the older form has it in one BCD byte).
struct EntryPointForm {
    std::string_view anchor;
    size_t length;
    size_t major, minor; // offsets; the same offset for BCD
};
constexpr EntryPointForm kForms[] = {
    {"_SM3_", 24, 7, 8},
    {"_SM_", 30, 6, 7}, // 31, but the standard of 2.1 said 30 by mistake
    {"_DMI_", 15, 14, 14},
};

// Minor versions that firmware wrote for 2.3.1, 2.3.3 and 2.5.1: it is read by the standard that it follows.
struct OddMinor {
    unsigned minor, meant;
};
constexpr OddMinor kOddMinors[] = {{31, 3}, {33, 3}, {51, 6}};

unsigned meantMinor(unsigned major, unsigned minor)
{
    for (const OddMinor& odd : kOddMinors)
        if (major == 2 && minor == odd.minor)
            return odd.meant;
    return minor;
}
} // namespace

std::string_view Structure::field(size_t offset, size_t length) const
{
    if (offset > formatted_ || length > formatted_ - offset)
        return {};
    return bytes_.substr(offset, length);
}

std::optional<uint8_t> Structure::byte(size_t offset) const
{
    const std::string_view bytes = field(offset, 1);
    return bytes.empty() ? std::nullopt : std::optional<uint8_t>(byteAt(bytes, 0));
}

std::optional<uint64_t> Structure::quadWord(size_t offset) const
{
    const std::optional<uint32_t> low = doubleWord(offset);
    const std::optional<uint32_t> high = doubleWord(offset + 4);
    if (!low || !high)
        return std::nullopt;
    return uint64_t{*high} << 32 | *low;
}

std::optional<uint32_t> Structure::doubleWord(size_t offset) const
{
    const std::string_view bytes = field(offset, 4);
    if (bytes.empty())
        return std::nullopt;
    return uint32_t{byteAt(bytes, 0)} | uint32_t{byteAt(bytes, 1)} << 8 | uint32_t{byteAt(bytes, 2)} << 16 |
           uint32_t{byteAt(bytes, 3)} << 24;
}

std::optional<uint16_t> Structure::word(size_t offset) const
{
    const std::string_view bytes = field(offset, 2);
    if (bytes.empty())
        return std::nullopt;
    return static_cast<uint16_t>(byteAt(bytes, 0) | byteAt(bytes, 1) << 8);
}

std::string_view Structure::string(size_t offset) const
{
    std::string_view rest = bytes_.substr(formatted_);
    for (unsigned number = byte(offset).value_or(0); number != 0; --number) {
        const size_t end = rest.find('\0');
        const std::string_view text = rest.substr(0, end);
        if (text.empty())
            return {}; // the set ends before this number
        if (number == 1)
            return report::trimmed(text);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return {};
}

std::optional<StructureTable::Version> StructureTable::versionOf(std::string_view entryPoint)
{
    for (const EntryPointForm& form : kForms) {
        if (!entryPoint.starts_with(form.anchor) || entryPoint.size() < form.length)
            continue;
        const unsigned major = byteAt(entryPoint, form.major);
        const unsigned minor = byteAt(entryPoint, form.minor);
        return form.major == form.minor ? Version{major >> 4, minor & 0xF} : Version{major, meantMinor(major, minor)};
    }
    return std::nullopt;
}

std::string StructureTable::version() const
{
    return version_ ? std::to_string(version_->major) + '.' + std::to_string(version_->minor) : std::string();
}

bool StructureTable::isAtLeast(unsigned major, unsigned minor) const
{
    return !version_ || version_->major > major || (version_->major == major && version_->minor >= minor);
}

StructureTable::StructureTable(std::string_view entryPoint, std::string table)
    : version_(versionOf(entryPoint)), bytes_(std::move(table))
{
    if (bytes_.size() > kMostBytes)
        bytes_.resize(kMostBytes);
    parse();
}

// A structure is its formatted area, its strings, and a second zero byte (DSP0134, 6.1.3). What does not fit into the
// table ends it.
void StructureTable::parse()
{
    std::string_view rest = bytes_;
    bool isCut = false;
    while (rest.size() >= kHeaderLength) {
        const size_t formatted = byteAt(rest, 1);
        if (formatted < kHeaderLength || formatted > rest.size()) {
            problem_ = "structure " + std::to_string(structures_.size()) + " has a length of " +
                       std::to_string(formatted) + " with " + std::to_string(rest.size()) + " bytes left";
            return;
        }
        const size_t end = rest.find(std::string_view("\0\0", 2), formatted);
        isCut = end == std::string_view::npos;
        const size_t length = isCut ? rest.size() : end + 2;
        structures_.emplace_back(rest.substr(0, length), formatted);
        if (structures_.back().type() == SMBIOS_END)
            return;
        rest.remove_prefix(length);
    }
    if (isCut || !rest.empty())
        problem_ = "structure " + std::to_string(structures_.size() - (isCut ? 1 : 0)) + " is cut off";
}

std::vector<const Structure*> StructureTable::all(uint8_t type) const
{
    std::vector<const Structure*> found;
    for (const Structure& structure : structures_)
        if (structure.type() == type)
            found.push_back(&structure);
    return found;
}

const Structure* StructureTable::first(uint8_t type) const
{
    for (const Structure& structure : structures_)
        if (structure.type() == type)
            return &structure;
    return nullptr;
}
} // namespace host
