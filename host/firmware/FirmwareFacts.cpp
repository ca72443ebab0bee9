#include "host/firmware/FirmwareFacts.h"

#include <cstdio>

#include "host/Root.h"
#include "report/Identity.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr std::string_view kEntryPointPath = "/sys/firmware/dmi/tables/smbios_entry_point";
constexpr std::string_view kIdFolder = "/sys/class/dmi/id/";
constexpr uint8_t kChassisTypeBits = 0x7F; // bit 7: the chassis has a lock

bool isOneByteRepeated(std::string_view raw, char byte)
{
    return raw.find_first_not_of(byte) == std::string_view::npos;
}
} // namespace

FirmwareFacts::FirmwareFacts(const Root& root, Notes& notes)
    : root_(root),
      table_(root.read(kEntryPointPath).value_or(""), root.read(kTablePath, StructureTable::kMostBytes).value_or(""))
{
    if (!table_.problem().empty())
        notes.note(std::string(kTablePath) + ": " + table_.problem());
}

MaybeFact FirmwareFacts::text(StructureType type, size_t offset, const char* name) const
{
    if (const Structure* structure = table_.first(type)) {
        const std::string_view string = structure->string(offset);
        if (!string.empty())
            return Fact{std::string(string), std::string(kTablePath)};
    }
    return name != nullptr ? root_.fact(std::string(kIdFolder) + name) : std::nullopt;
}

MaybeFact FirmwareFacts::releaseDate() const
{
    constexpr size_t kReleaseDate = 8;
    MaybeFact date = text(SMBIOS_FIRMWARE, kReleaseDate, "bios_date");
    if (date)
        date->value = isoDate(date->value);
    return date && !date->value.empty() ? date : std::nullopt;
}

std::optional<uint8_t> FirmwareFacts::chassisType(std::string& source) const
{
    constexpr size_t kType = 5;
    std::optional<uint64_t> type;
    source = kTablePath;
    if (const Structure* chassis = table_.first(SMBIOS_CHASSIS))
        type = chassis->byte(kType);
    if (!type) {
        source = std::string(kIdFolder) + "chassis_type";
        type = root_.number(source);
    }
    if (!type || *type > 0xFF)
        return std::nullopt;
    return static_cast<uint8_t>(*type & kChassisTypeBits);
}

MaybeFact FirmwareFacts::rawUuid() const
{
    constexpr size_t kUuid = 8;
    constexpr size_t kUuidLength = 16;
    const Structure* system = table_.first(SMBIOS_SYSTEM);
    const std::string_view raw = system != nullptr ? system->field(kUuid, kUuidLength) : std::string_view();
    if (raw.empty() || isOneByteRepeated(raw, '\0') || isOneByteRepeated(raw, '\xFF'))
        return std::nullopt;
    std::string digits;
    for (const char byte : raw) {
        char pair[4];
        snprintf(pair, sizeof pair, "%02X", static_cast<unsigned>(static_cast<uint8_t>(byte)));
        digits += pair;
    }
    return Fact{digits, std::string(kTablePath)};
}

// Firmware older than 2.6 wrote the fields in RFC 4122's order; the kernel reads them so too.
MaybeFact FirmwareFacts::systemUuid() const
{
    if (MaybeFact raw = rawUuid()) {
        raw->value = report::uuidOfRaw(raw->value, table_.isAtLeast(2, 6));
        return raw;
    }
    if (table_.first(SMBIOS_SYSTEM) != nullptr)
        return std::nullopt;
    MaybeFact fact = root_.fact(std::string(kIdFolder) + "product_uuid");
    if (fact)
        fact->value = report::lower(fact->value);
    return fact;
}

std::string isoDate(std::string_view date)
{
    const std::vector<std::string_view> parts = report::split(date, '/');
    if (parts.size() != 3 || (parts[2].size() != 2 && parts[2].size() != 4))
        return {};
    const auto month = report::parseNumber<unsigned>(parts[0]);
    const auto day = report::parseNumber<unsigned>(parts[1]);
    const auto year = report::parseNumber<unsigned>(parts[2]);
    if (!month || !day || !year || *month < 1 || *month > 12 || *day < 1 || *day > 31)
        return {};
    char text[32];
    snprintf(text, sizeof text, "%04u-%02u-%02u", parts[2].size() == 2 ? 1900 + *year : *year, *month, *day);
    return text;
}
} // namespace host
