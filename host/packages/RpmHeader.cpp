#include "host/packages/RpmHeader.h"

namespace host
{
namespace
{
// Tags, and the types of their values, of rpm's format.
enum Tag : uint32_t {
    NAME = 1000,
    VERSION = 1001,
    RELEASE = 1002,
    EPOCH = 1003,
    INSTALL_TIME = 1008,
    SIZE = 1009,
    VENDOR = 1011,
    PACKAGER = 1015,
    GROUP = 1016,
    ARCH = 1022,
    SOURCE_RPM = 1044,
    LONG_SIZE = 5009,
};
enum Type : uint32_t { INT32 = 4, INT64 = 5, STRING = 6, STRING_ARRAY = 8, I18N_STRING = 9 };

constexpr size_t kHead = 8, kEntry = 16;

// The big-endian number of so many bytes at an offset that lies in the bytes.
uint64_t numberAt(std::string_view bytes, size_t offset, size_t size)
{
    uint64_t number = 0;
    for (size_t i = 0; i < size; ++i)
        number = number << 8 | static_cast<uint8_t>(bytes[offset + i]);
    return number;
}

// One header's entries and data, whose sizes are those of the bytes.
class Header
{
public:
    static std::optional<Header> of(std::string_view bytes)
    {
        if (bytes.size() < kHead)
            return std::nullopt;
        const uint64_t entries = numberAt(bytes, 0, 4) * kEntry, data = numberAt(bytes, 4, 4);
        if (entries + data > bytes.size() - kHead)
            return std::nullopt;
        return Header(bytes.substr(kHead, entries), bytes.substr(kHead + entries, data));
    }

    // The first text of a tag; empty when there is none or it has no end.
    std::string_view text(Tag tag) const
    {
        const auto [type, value] = find(tag);
        const bool isText = type == STRING || type == STRING_ARRAY || type == I18N_STRING;
        const size_t end = isText ? value.find('\0') : std::string_view::npos;
        return end == std::string_view::npos ? std::string_view() : value.substr(0, end);
    }

    // The first number of a tag.
    std::optional<uint64_t> number(Tag tag) const
    {
        const auto [type, value] = find(tag);
        const size_t size = type == INT32 ? 4 : type == INT64 ? 8 : 0;
        return size != 0 && value.size() >= size ? std::optional(numberAt(value, 0, size)) : std::nullopt;
    }

private:
    struct Value {
        uint64_t type = 0;
        std::string_view bytes; // to the end of the data
    };

    Header(std::string_view entries, std::string_view data) : entries_(entries), data_(data) {}

    // An entry: tag, type, offset in the data, count of values.
    Value find(Tag tag) const
    {
        for (size_t entry = 0; entry < entries_.size(); entry += kEntry) {
            const uint64_t offset = numberAt(entries_, entry + 8, 4);
            if (numberAt(entries_, entry, 4) == tag && offset < data_.size() && numberAt(entries_, entry + 12, 4) != 0)
                return {numberAt(entries_, entry + 4, 4), data_.substr(offset)};
        }
        return {};
    }

    std::string_view entries_, data_;
};

std::optional<uint64_t> sizeKB(const Header& header)
{
    const std::optional<uint64_t> large = header.number(LONG_SIZE);
    const std::optional<uint64_t> bytes = large ? large : header.number(SIZE);
    return bytes ? std::optional(kilobytes(*bytes)) : std::nullopt;
}
} // namespace

Package RpmPackage::package() const
{
    Package package;
    package.name = name;
    package.version = version;
    package.revision = release;
    package.architecture = architecture;
    package.vendor = vendor;
    package.category = group;
    package.sourcePackage = sourcePackage;
    package.installedKB = installedKB;
    package.installDate = installDate;
    return package;
}

std::optional<RpmPackage> parseRpmHeader(std::string_view bytes)
{
    const std::optional<Header> header = Header::of(bytes);
    if (!header || header->text(NAME).empty() || header->text(VERSION).empty())
        return std::nullopt;
    const std::optional<uint64_t> epoch = header->number(EPOCH);
    const std::optional<uint64_t> time = header->number(INSTALL_TIME);
    RpmPackage package;
    package.name = header->text(NAME);
    package.version = (epoch ? std::to_string(*epoch) + ':' : "") + std::string(header->text(VERSION));
    package.release = header->text(RELEASE);
    package.architecture = header->text(ARCH);
    package.vendor = header->text(VENDOR).empty() ? header->text(PACKAGER) : header->text(VENDOR);
    package.group = header->text(GROUP);
    package.sourcePackage = header->text(SOURCE_RPM);
    package.installedKB = sizeKB(*header);
    if (time && *time <= UINT32_MAX)
        package.installDate = static_cast<int64_t>(*time);
    return package;
}
} // namespace host
