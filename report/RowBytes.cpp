#include "report/RowBytes.h"

namespace report
{
namespace
{
enum ContentKind : uint8_t { TEXT, NUMBER, REAL, DATE_TIME }; // in the order of Content

void appendDateTime(std::string& bytes, const DateTime& t)
{
    appendBytes(bytes, t.year);
    for (const uint8_t part : {t.month, t.day, t.hour, t.minute, t.second})
        appendBytes(bytes, part);
    appendBytes(bytes, static_cast<uint8_t>(t.offsetSeconds.has_value()));
    appendBytes(bytes, t.offsetSeconds.value_or(0));
}

// A time that a report can hold; offsets are those of the world's zones, with room to spare.
bool isDateTime(const DateTime& t)
{
    constexpr int32_t kMostOffset = 26 * 3600;
    return t.year >= 0 && t.year <= 9999 && t.month >= 1 && t.month <= 12 && t.day >= 1 && t.day <= 31 &&
           t.hour <= 23 && t.minute <= 59 && t.second <= 60 &&
           (!t.offsetSeconds || (*t.offsetSeconds >= -kMostOffset && *t.offsetSeconds <= kMostOffset));
}

bool takeDateTime(std::string_view& bytes, Content& content)
{
    DateTime t;
    bool hasOffset;
    int32_t offset;
    if (!takeBytes(bytes, t.year) || !takeBytes(bytes, t.month) || !takeBytes(bytes, t.day) ||
        !takeBytes(bytes, t.hour) || !takeBytes(bytes, t.minute) || !takeBytes(bytes, t.second) ||
        !takeFlag(bytes, hasOffset) || !takeBytes(bytes, offset))
        return false;
    if (hasOffset)
        t.offsetSeconds = offset;
    content = t;
    return isDateTime(t);
}

template <typename T>
bool takeNumber(std::string_view& bytes, Content& content)
{
    T number;
    if (!takeBytes(bytes, number))
        return false;
    content = number;
    return true;
}
} // namespace

void appendText(std::string& bytes, std::string_view text)
{
    appendBytes(bytes, static_cast<uint32_t>(text.size()));
    bytes += text;
}

void appendContent(std::string& bytes, const Content& content)
{
    appendBytes(bytes, static_cast<uint8_t>(content.index()));
    if (const auto* text = std::get_if<std::string>(&content))
        appendText(bytes, *text);
    else if (const auto* number = std::get_if<uint64_t>(&content))
        appendBytes(bytes, *number);
    else if (const auto* real = std::get_if<double>(&content))
        appendBytes(bytes, *real);
    else
        appendDateTime(bytes, std::get<DateTime>(content));
}

bool takeFlag(std::string_view& bytes, bool& flag)
{
    uint8_t byte;
    if (!takeBytes(bytes, byte) || byte > 1)
        return false;
    flag = byte != 0;
    return true;
}

bool takeText(std::string_view& bytes, std::string_view& text)
{
    uint32_t length;
    if (!takeBytes(bytes, length) || bytes.size() < length)
        return false;
    text = bytes.substr(0, length);
    bytes.remove_prefix(length);
    return true;
}

bool takeContent(std::string_view& bytes, Content& content)
{
    uint8_t kind;
    std::string_view text;
    if (!takeBytes(bytes, kind))
        return false;
    switch (kind) {
    case TEXT:
        if (!takeText(bytes, text))
            return false;
        content = std::string(text);
        return true;
    case NUMBER:
        return takeNumber<uint64_t>(bytes, content);
    case REAL:
        return takeNumber<double>(bytes, content);
    case DATE_TIME:
        return takeDateTime(bytes, content);
    default:
        return false;
    }
}
} // namespace report
