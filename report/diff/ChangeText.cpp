#include "report/Diff.h"
#include "report/JsonContent.h"
#include "report/Text.h"
#include "report/Writer.h"

namespace report
{
namespace
{
using Json = nlohmann::ordered_json;

constexpr const char* kSigns[] = {"+", "-", "~"}; // in the order of Change::Kind
constexpr const char* kWords[] = {"added", "removed", "changed"};

// Ranges of characters that move a terminal's cursor, end a line or turn the direction of a text: C0, DEL and C1,
// direction marks, separators of lines and paragraphs, direction embeddings and isolates, the byte order mark.
struct Range {
    uint32_t first, last;
};
constexpr Range kUnshown[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x61C, 0x61C},  {0x200E, 0x200F},
                              {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF}};

bool isUnshown(uint32_t character)
{
    for (const Range& range : kUnshown)
        if (character >= range.first && character <= range.last)
            return true;
    return false;
}

// The character that valid UTF-8 begins with, and its bytes.
uint32_t firstCharacter(std::string_view text, size_t& bytes)
{
    const auto byte = [text](size_t i) { return static_cast<uint32_t>(static_cast<unsigned char>(text[i])); };
    const uint32_t lead = byte(0);
    const size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    bytes = std::min(length, text.size());
    uint32_t character = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (size_t i = 1; i < bytes; ++i)
        character = character << 6 | (byte(i) & 0x3F);
    return character;
}

std::string escaped(uint32_t character)
{
    switch (character) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        char text[16];
        snprintf(text, sizeof text, "\\u%04X", character);
        return text;
    }
}

std::string quotedText(std::string_view text)
{
    std::string result = "\"";
    while (!text.empty()) {
        size_t bytes = 1;
        const uint32_t character = firstCharacter(text, bytes);
        if (character == '"' || character == '\\')
            result += '\\';
        if (isUnshown(character))
            result += escaped(character);
        else
            result += text.substr(0, bytes);
        text.remove_prefix(bytes);
    }
    return result + '"';
}

std::string shownValue(const std::optional<Value>& value)
{
    return value ? quotedText(valueText(*value)) : "absent";
}

// A value within brackets: as it is where that is clear.
std::string shownKey(const Value& value)
{
    const std::string text = valueText(value), inQuotes = quotedText(text);
    const bool isClear = !text.empty() && trimmed(text) == text && inQuotes.size() == text.size() + 2 &&
                         text.find_first_of(",[]") == std::string::npos;
    return std::string(value.name()) + "=" + (isClear ? text : inQuotes);
}

// "[DeviceName=/dev/sda]", "[#3]", or nothing for the only row of its group.
std::string keyText(const Change& change)
{
    std::string text;
    for (const Value& value : change.key)
        text += (text.empty() ? "" : ",") + shownKey(value);
    if (change.oldRow != 0 || change.newRow != 0) {
        text += text.empty() ? "#" : ",#";
        text += std::to_string(change.oldRow != 0 ? change.oldRow : change.newRow);
        if (change.oldRow != 0 && change.newRow != 0 && change.oldRow != change.newRow)
            text += "->#" + std::to_string(change.newRow);
    }
    return text.empty() ? text : "[" + text + "]";
}

Json rowJson(uint64_t row)
{
    return row != 0 ? Json(row) : Json();
}

Json valueJson(const std::optional<Value>& value)
{
    return value ? jsonContent(*value) : Json();
}
} // namespace

std::string changeText(const Change& change)
{
    const std::string row = std::string(kSigns[change.kind]) + " " + change.group + keyText(change);
    if (change.kind != Change::CHANGED)
        return row + '\n';
    std::string lines;
    for (const ValueChange& value : change.values)
        lines += row + " " + std::string(value.name()) + ": " + shownValue(value.old) + " -> " + shownValue(value.now) +
                 "\n";
    return lines;
}

std::string changeJson(const Change& change)
{
    Json key = Json::object(), attributes = Json::object();
    for (const Value& value : change.key)
        key[std::string(value.name())] = jsonContent(value);
    if (change.oldRow != 0 || change.newRow != 0)
        key["$row"] = Json::array({rowJson(change.oldRow), rowJson(change.newRow)});
    for (const ValueChange& value : change.values)
        attributes[std::string(value.name())] = Json::array({valueJson(value.old), valueJson(value.now)});
    return jsonLine(
        {{"group", change.group}, {"change", kWords[change.kind]}, {"key", key}, {"attributes", attributes}});
}
} // namespace report
