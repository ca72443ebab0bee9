#include "host/block/MediaKind.h"

#include "com/VexEnumValues.h"
#include "host/Root.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr uint32_t kMemoryCard = 0x1F, kLtoUltrium = 0x39;

// What a drive can, best first, and the medium that this makes it a drive of.
struct Ability {
    std::string_view line;
    uint32_t kind;
};
constexpr Ability kAbilities[] = {
    {"Can write DVD-RAM", 0x19}, {"Can write DVD-R", 0x26}, {"Can read DVD", 0x17},
    {"Can write CD-RW", 0x22},   {"Can write CD-R", 0x14},
};

struct Maker {
    std::string_view prefix;
    const char* name;
};
constexpr Maker kDiskMakers[] = {
    {"ST", "Seagate"},      {"WDC", "Western Digital"}, {"WD", "Western Digital"},
    {"HGST", "HGST"},       {"Hitachi", "Hitachi"},     {"TOSHIBA", "Toshiba"},
    {"SAMSUNG", "Samsung"}, {"INTEL", "Intel"},         {"Crucial", "Crucial"},
    {"CT", "Crucial"},      {"KINGSTON", "Kingston"},   {"Micron", "Micron"},
    {"MTFD", "Micron"},     {"SanDisk", "SanDisk"},     {"SSDSC", "Intel"},
    {"MK", "Toshiba"},      {"MZ", "Samsung"},          {"HUS", "HGST"},
    {"HDS", "Hitachi"},
};

struct CardMaker {
    uint32_t number;
    const char* name;
};
constexpr CardMaker kCardMakers[] = {
    {0x01, "Panasonic"}, {0x02, "Toshiba"}, {0x03, "SanDisk"},  {0x13, "Micron"},    {0x15, "Samsung"},
    {0x1B, "Samsung"},   {0x1D, "ADATA"},   {0x27, "Phison"},   {0x28, "Lexar"},     {0x31, "Silicon Power"},
    {0x41, "Kingston"},  {0x45, "SanDisk"}, {0x70, "Kingston"}, {0x74, "Transcend"}, {0x90, "SK Hynix"},
    {0x9C, "Sony"},      {0xFE, "Micron"},
};

bool isNumbered(std::string_view name, std::string_view prefix)
{
    return name.starts_with(prefix) && report::parseNumber(name.substr(prefix.size())).has_value();
}

// The column of a drive in the table whose first line names the drives.
std::optional<size_t> columnOf(std::string_view info, std::string_view drive)
{
    std::string_view line;
    while (report::takeLine(info, line)) {
        const auto [key, value] = report::keyValue(line, ':');
        const std::vector<std::string_view> names = report::words(value);
        for (size_t i = 0; key == "drive name" && i < names.size(); ++i)
            if (names[i] == drive)
                return i;
    }
    return std::nullopt;
}

bool can(std::string_view info, std::string_view ability, size_t column)
{
    std::string_view line;
    while (report::takeLine(info, line)) {
        const auto [key, value] = report::keyValue(line, ':');
        const std::vector<std::string_view> columns = report::words(value);
        if (key == ability && column < columns.size())
            return columns[column] == "1";
    }
    return false;
}
} // namespace

uint32_t opticalKind(std::string_view info, std::string_view drive)
{
    if (const std::optional<size_t> column = columnOf(info, drive))
        for (const Ability& ability : kAbilities)
            if (can(info, ability.line, *column))
                return ability.kind;
    return STORAGE_TYPE_CD_ROM;
}

uint32_t mediaKind(const Root& root, const std::string& name, std::string_view model)
{
    if (isNumbered(name, "sr"))
        return opticalKind(root.read("/proc/sys/dev/cdrom/info").value_or(""), name);
    if (isNumbered(name, "fd"))
        return STORAGE_TYPE_FLOPPY;
    if (isNumbered(name, "st"))
        return report::lower(model).find("ultrium") != std::string::npos ? kLtoUltrium : STORAGE_TYPE_TAPE_CARTRIDGE;
    return name.starts_with("mmcblk") ? kMemoryCard : STORAGE_TYPE_HARD_DISK;
}

std::string makerOfModel(std::string_view model)
{
    for (const Maker& maker : kDiskMakers)
        if (model.starts_with(maker.prefix))
            return maker.name;
    const size_t blank = model.find(' ');
    return blank != std::string_view::npos ? std::string(model.substr(0, blank)) : std::string();
}

std::string makerOfCard(std::string_view number)
{
    const auto value = number.starts_with("0x") ? report::parseNumber<uint32_t>(number.substr(2), 16) : std::nullopt;
    for (const CardMaker& maker : kCardMakers)
        if (maker.number == value)
            return maker.name;
    return {};
}
} // namespace host
