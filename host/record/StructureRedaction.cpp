#include <algorithm>

#include "host/firmware/StructureTable.h"
#include "host/record/Redaction.h"

namespace host
{
namespace
{
constexpr size_t kHeaderLength = 4; // type, length, handle

// Strings that identify: where their numbers stand (DSP0134, clause 7).
struct StringRow {
    uint8_t type;
    uint8_t offset;
};
constexpr StringRow kIdentifying[] = {
    {SMBIOS_SYSTEM, 0x07},
    {SMBIOS_BOARD, 0x07},
    {SMBIOS_BOARD, 0x08},
    {SMBIOS_CHASSIS, 0x07},
    {SMBIOS_CHASSIS, 0x08},
    {SMBIOS_PROCESSOR, 0x20},
    {SMBIOS_PROCESSOR, 0x21},
    {SMBIOS_MEMORY_DEVICE, 0x18},
    {SMBIOS_MEMORY_DEVICE, 0x19},
    {22, 0x05}, // portable battery
    {39, 0x08}, // power supply
    {39, 0x09},
};
constexpr size_t kUuid = 0x08, kUuidLength = 16; // of System Information

uint8_t byteAt(std::string_view bytes, size_t at)
{
    return static_cast<uint8_t>(bytes[at]);
}

// Text of another length is cut, or gets blanks: the table's own places stay.
void overwrite(std::string& table, size_t at, size_t length, std::string text)
{
    text.resize(length, ' ');
    table.replace(at, length, text);
}

void redactUuid(std::string& table, size_t at, const report::IdentifyingValues& values)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits;
    for (size_t i = 0; i < kUuidLength; ++i) {
        digits += kDigits[byteAt(table, at + i) >> 4];
        digits += kDigits[byteAt(table, at + i) & 0xF];
    }
    const std::string made = values.pseudonyms().uuid(digits).value_or(digits);
    for (size_t i = 0; i < kUuidLength; ++i)
        table[at + i] = static_cast<char>(kDigits.find(made[2 * i]) << 4 | kDigits.find(made[2 * i + 1]));
}

bool isIdentifying(std::string_view structure, size_t number)
{
    return std::any_of(std::begin(kIdentifying), std::end(kIdentifying), [&](const StringRow& row) {
        return row.type == byteAt(structure, 0) && row.offset < byteAt(structure, 1) &&
               byteAt(structure, row.offset) == number;
    });
}

// The strings behind a structure; returns the place behind their end.
size_t redactStrings(std::string& table, size_t begin, size_t at, const report::IdentifyingValues& values)
{
    for (size_t number = 1; at < table.size() && table[at] != '\0'; ++number) {
        const size_t end = std::min(table.find('\0', at), table.size());
        const std::string text = table.substr(at, end - at);
        const bool isOwn = isIdentifying(std::string_view(table).substr(begin), number);
        overwrite(table, at, text.size(), isOwn ? values.pseudonyms().value(text) : values.replaced(text));
        at = end + 1;
    }
    return at + 1;
}
} // namespace

std::string redactedStructureTable(std::string table, const report::IdentifyingValues& values)
{
    for (size_t at = 0; at + kHeaderLength <= table.size();) {
        const size_t length = byteAt(table, at + 1);
        const uint8_t type = byteAt(table, at);
        if (length < kHeaderLength || length > table.size() - at)
            break;
        if (type == SMBIOS_SYSTEM && length >= kUuid + kUuidLength)
            redactUuid(table, at + kUuid, values);
        const size_t strings = at + length;
        const bool hasNone = strings < table.size() && table[strings] == '\0';
        at = hasNone ? strings + 2 : redactStrings(table, at, strings, values);
        if (type == SMBIOS_END)
            break;
    }
    return table;
}
} // namespace host
