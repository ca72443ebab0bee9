#include "host/zone/ZoneFile.h"

#include <algorithm>

namespace host
{
static constexpr size_t kHeaderSize = 44;
static constexpr int32_t kMostOffset = 26 * 3600; // RFC 8536, 3.2: "utoff" is within a day and two hours

namespace
{
// Big-endian numbers, taken off the front of the bytes. Whoever reads has counted them before.
class Bytes
{
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

    uint64_t unsignedNumber(size_t size)
    {
        uint64_t number = 0;
        for (const char byte : take(size))
            number = number << 8 | static_cast<unsigned char>(byte);
        return number;
    }
    int64_t signedNumber(size_t size)
    {
        const uint64_t number = unsignedNumber(size);
        return size == 4 ? static_cast<int32_t>(static_cast<uint32_t>(number)) : static_cast<int64_t>(number);
    }
    std::string_view take(size_t size)
    {
        const std::string_view taken = bytes_.substr(0, size);
        bytes_.remove_prefix(taken.size());
        return taken;
    }
    std::string_view rest() const { return bytes_; }

private:
    std::string_view bytes_;
};

// Section 3.1; how many of each record follow.
struct Header {
    char version = 0;
    uint64_t utFlags = 0, standardFlags = 0, leaps = 0, transitions = 0, types = 0, characters = 0;

    uint64_t dataSize(uint64_t timeSize) const
    {
        return transitions * (timeSize + 1) + types * 6 + characters + leaps * (timeSize + 4) + standardFlags + utFlags;
    }
};
} // namespace

static std::optional<Header> readHeader(Bytes& bytes)
{
    if (bytes.rest().size() < kHeaderSize || bytes.take(4) != "TZif")
        return std::nullopt;
    Header header;
    header.version = bytes.take(16).front();
    for (uint64_t* count : {&header.utFlags, &header.standardFlags, &header.leaps, &header.transitions, &header.types,
                            &header.characters})
        *count = bytes.unsignedNumber(4);
    return header;
}

static void readTransitions(Bytes& bytes, const Header& header, size_t timeSize, ZoneFile& file)
{
    file.transitions.resize(header.transitions);
    for (ZoneTransition& transition : file.transitions)
        transition.at = bytes.signedNumber(timeSize);
    for (ZoneTransition& transition : file.transitions)
        transition.type = bytes.unsignedNumber(1);
}

static bool readTypes(Bytes& bytes, const Header& header, ZoneFile& file)
{
    std::vector<size_t> nameAt;
    for (uint64_t i = 0; i < header.types; ++i) {
        const int64_t offset = bytes.signedNumber(4);
        if (offset < -kMostOffset || offset > kMostOffset)
            return false;
        const bool isDaylight = bytes.unsignedNumber(1) != 0;
        file.types.push_back({static_cast<int32_t>(offset), isDaylight, {}});
        nameAt.push_back(bytes.unsignedNumber(1));
    }
    const std::string_view names = bytes.take(header.characters);
    for (size_t i = 0; i < nameAt.size(); ++i) {
        if (nameAt[i] >= names.size())
            return false;
        const std::string_view name = names.substr(nameAt[i]);
        file.types[i].name = name.substr(0, name.find('\0'));
    }
    return !file.types.empty();
}

static void readLeaps(Bytes& bytes, const Header& header, size_t timeSize, ZoneFile& file)
{
    for (uint64_t i = 0; i < header.leaps; ++i) {
        const int64_t at = bytes.signedNumber(timeSize);
        file.leaps.push_back({at, static_cast<int32_t>(bytes.signedNumber(4))});
    }
}

static bool isConsistent(const ZoneFile& file)
{
    const auto inOrder = [](const auto& list) {
        return std::adjacent_find(list.begin(), list.end(),
                                  [](const auto& a, const auto& b) { return a.at >= b.at; }) == list.end();
    };
    const auto hasType = [&file](const ZoneTransition& transition) { return transition.type < file.types.size(); };
    return inOrder(file.transitions) && inOrder(file.leaps) &&
           std::all_of(file.transitions.begin(), file.transitions.end(), hasType);
}

static std::optional<ZoneFile> readData(Bytes& bytes, const Header& header, size_t timeSize)
{
    ZoneFile file;
    if (header.dataSize(timeSize) > bytes.rest().size())
        return std::nullopt;
    readTransitions(bytes, header, timeSize, file);
    if (!readTypes(bytes, header, file))
        return std::nullopt;
    readLeaps(bytes, header, timeSize, file);
    bytes.take(header.standardFlags + header.utFlags);
    return isConsistent(file) ? std::optional(std::move(file)) : std::nullopt;
}

// Section 3.3: the rule between two line ends; none when it is empty.
static std::optional<ZoneRule> readFooter(std::string_view footer)
{
    const size_t end = footer.size() > 1 && footer.front() == '\n' ? footer.find('\n', 1) : std::string_view::npos;
    return end == std::string_view::npos ? std::nullopt : parseZoneRule(footer.substr(1, end - 1));
}

std::optional<ZoneFile> parseZoneFile(std::string_view content)
{
    Bytes bytes(content);
    std::optional<Header> header = readHeader(bytes);
    if (!header)
        return std::nullopt;
    if (header->version == '\0')
        return readData(bytes, *header, 4);
    const uint64_t oldSize = header->dataSize(4);
    if (oldSize > bytes.rest().size())
        return std::nullopt;
    bytes.take(oldSize);
    header = readHeader(bytes);
    if (!header)
        return std::nullopt;
    std::optional<ZoneFile> file = readData(bytes, *header, 8);
    if (file)
        file->rule = readFooter(bytes.rest());
    return file;
}
} // namespace host
