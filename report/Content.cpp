#include "report/Content.h"

#include <charconv>
#include <cmath>

#include "report/Text.h"
#include "report/Writer.h"

namespace report
{
namespace
{
bool isReal(const Attribute& attribute)
{
    return attribute.type == VEX_FLOAT || attribute.type == VEX_DOUBLE;
}

// The number of a decimal text that begins with no needless zero.
std::optional<uint64_t> plainNumber(std::string_view text)
{
    if (text.size() > 1 && text[0] == '0')
        return std::nullopt;
    return parseNumber(text);
}

std::optional<double> realNumber(std::string_view text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

// The content that a type makes of a text; absent where it makes none.
std::optional<Content> typed(const Attribute& attribute, const std::string& text)
{
    if (attribute.type == VEX_STRING || attribute.type == VEX_OCTETSTRING)
        return std::nullopt;
    if (attribute.type == VEX_DATETIME) {
        const auto time = parseXmlDateTime(text);
        return time ? std::optional<Content>(*time) : std::nullopt;
    }
    if (isReal(attribute)) {
        const auto number = realNumber(text);
        return number ? std::optional<Content>(*number) : std::nullopt;
    }
    if (const vexEnumDef* value = findEnumText(attribute.enums, text))
        return Content(uint64_t{value->value});
    const auto number = plainNumber(text);
    return number ? std::optional<Content>(*number) : std::nullopt;
}

// A fixed number of digits at the start of a text, cut from it; -1 when others stand there.
int takeDigits(std::string_view& text, size_t count)
{
    if (text.size() < count)
        return -1;
    int number = 0;
    for (const char c : text.substr(0, count)) {
        if (c < '0' || c > '9')
            return -1;
        number = number * 10 + (c - '0');
    }
    text.remove_prefix(count);
    return number;
}

bool takeCharacter(std::string_view& text, char c)
{
    if (text.empty() || text[0] != c)
        return false;
    text.remove_prefix(1);
    return true;
}

int daysOf(int year, int month)
{
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return kDays[month - 1] + (month == 2 && isLeap ? 1 : 0);
}

// Cuts date and time of day from the front of a text, their parts joined by these two characters.
std::optional<DateTime> takeDateTime(std::string_view& text, char between, char inTime)
{
    const int year = takeDigits(text, 4);
    const bool first = takeCharacter(text, '-');
    const int month = takeDigits(text, 2);
    const bool second = takeCharacter(text, '-');
    const int day = takeDigits(text, 2);
    const bool third = takeCharacter(text, between);
    const int hour = takeDigits(text, 2);
    const bool fourth = takeCharacter(text, inTime);
    const int minute = takeDigits(text, 2);
    const bool fifth = takeCharacter(text, inTime);
    const int seconds = takeDigits(text, 2);
    if (!first || !second || !third || !fourth || !fifth || year < 0 || month < 1 || month > 12 || day < 1 ||
        day > daysOf(year, month) || hour < 0 || hour > 23 || minute < 0 || minute > 59 || seconds < 0 || seconds > 60)
        return std::nullopt;
    const auto byte = [](int number) { return static_cast<uint8_t>(number); };
    return DateTime{year, byte(month), byte(day), byte(hour), byte(minute), byte(seconds), std::nullopt};
}

// "+01:00", "Z"; true and nothing for no offset at all.
bool takeOffset(std::string_view text, std::optional<int32_t>& offset)
{
    if (text.empty())
        return true;
    if (text == "Z") {
        offset = 0;
        return true;
    }
    const bool isWest = text[0] == '-';
    if (!isWest && text[0] != '+')
        return false;
    text.remove_prefix(1);
    const int hours = takeDigits(text, 2);
    const bool isColon = takeCharacter(text, ':');
    const int minutes = takeDigits(text, 2);
    if (!isColon || !text.empty() || hours < 0 || hours > 23 || minutes < 0 || minutes > 59)
        return false;
    offset = (isWest ? -1 : 1) * (hours * 3600 + minutes * 60);
    return true;
}

// A number as invhw and programs of other locales write it.
std::optional<Content> looseReal(std::string text)
{
    if (const size_t comma = text.find(','); comma != std::string::npos)
        text[comma] = '.';
    const auto number = realNumber(text);
    return number ? std::optional<Content>(*number) : std::nullopt;
}

std::optional<Content> looseNumber(const Attribute& attribute, std::string_view text)
{
    if (const auto number = parseNumber(text))
        return Content(*number);
    const auto negative = parseNumber<int64_t>(text);
    if (!negative || *negative < INT32_MIN || attribute.type > VEX_UQUAD)
        return std::nullopt;
    if (attribute.type == VEX_UQUAD)
        return Content(static_cast<uint64_t>(*negative));
    return Content(uint64_t{static_cast<uint32_t>(static_cast<int32_t>(*negative))});
}
} // namespace

Content contentOfText(const Attribute* attribute, std::string text)
{
    if (attribute == nullptr)
        return text;
    std::optional<Content> content = typed(*attribute, text);
    if (!content)
        return text;
    Value value;
    value.attribute = attribute;
    value.content = std::move(*content);
    return valueText(value) == text ? std::move(value.content) : Content(std::move(text));
}

Content contentOfJsonText(const Attribute* attribute, std::string text)
{
    if (attribute == nullptr || attribute->type != VEX_DATETIME)
        return contentOfText(attribute, std::move(text));
    if (const auto time = parseRfc3339(text))
        return *time;
    return text;
}

Content meaningOf(const Value& value)
{
    const auto* text = std::get_if<std::string>(&value.content);
    if (text == nullptr || value.attribute == nullptr)
        return value.content;
    const Attribute& attribute = *value.attribute;
    if (attribute.type == VEX_STRING || attribute.type == VEX_OCTETSTRING)
        return value.content;
    if (attribute.type == VEX_DATETIME) {
        const auto time = parseXmlDateTime(*text);
        return time ? Content(*time) : value.content;
    }
    const auto content = isReal(attribute) ? looseReal(*text) : looseNumber(attribute, *text);
    return content ? *content : value.content;
}

std::optional<DateTime> parseXmlDateTime(std::string_view text)
{
    const auto time = takeDateTime(text, '-', '.');
    return time && text == ".0000000" ? time : std::nullopt;
}

std::optional<DateTime> parseRfc3339(std::string_view text)
{
    auto time = takeDateTime(text, 'T', ':');
    if (!time)
        return std::nullopt;
    if (takeCharacter(text, '.')) {
        if (!takeCharacter(text, '0'))
            return std::nullopt;
        text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    }
    return takeOffset(text, time->offsetSeconds) ? time : std::nullopt;
}
} // namespace report
