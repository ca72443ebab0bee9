#include "report/Writer.h"

#include <cstdio>
#include <cstdlib>

namespace report
{
namespace
{
// A number of an enumeration is its text where it has one.
std::string numberText(const Attribute* attribute, uint64_t number)
{
    const char* text = attribute != nullptr ? enumText(attribute->enums, number) : nullptr;
    return text != nullptr ? text : std::to_string(number);
}

// Digits are what the locale does not touch: the parts before and behind the point are printed apart.
std::string fixedPoint(double value)
{
    char digits[400];
    snprintf(digits, sizeof digits, "%.6f", value);
    std::string text = digits;
    for (char& c : text)
        if (c == ',')
            c = '.';
    return text;
}

std::string dateTimeText(const DateTime& t)
{
    char text[64];
    snprintf(text, sizeof text, "%04d-%02d-%02d-%02d.%02d.%02d.0000000", t.year, t.month, t.day, t.hour, t.minute,
             t.second);
    return text;
}
} // namespace

std::string valueText(const Value& value)
{
    if (const auto* text = std::get_if<std::string>(&value.content))
        return *text;
    if (const auto* number = std::get_if<uint64_t>(&value.content))
        return numberText(value.attribute, *number);
    if (const auto* real = std::get_if<double>(&value.content))
        return fixedPoint(*real);
    return dateTimeText(std::get<DateTime>(value.content));
}

std::string rfc3339(const DateTime& dateTime)
{
    char text[64];
    snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", dateTime.year, dateTime.month, dateTime.day,
             dateTime.hour, dateTime.minute, dateTime.second);
    std::string result = text;
    if (!dateTime.offsetSeconds)
        return result;
    if (*dateTime.offsetSeconds == 0)
        return result + 'Z';
    const int minutes = std::abs(*dateTime.offsetSeconds) / 60;
    snprintf(text, sizeof text, "%c%02d:%02d", *dateTime.offsetSeconds < 0 ? '-' : '+', minutes / 60, minutes % 60);
    return result + text;
}

std::unique_ptr<Writer> makeWriter(std::string_view form, std::ostream& out, bool sources)
{
    if (form == "xml")
        return std::make_unique<XmlWriter>(out, sources);
    if (form == "json")
        return std::make_unique<JsonWriter>(out, sources);
    return nullptr;
}

Header headerOf(const Report& report)
{
    Header header{report.program, report.date, {}};
    for (const GroupRows& group : report.groups)
        if (!group.rows.empty())
            header.versions.emplace_back(group.name(), group.version);
    return header;
}

void write(const Report& report, Writer& writer)
{
    writer.begin(headerOf(report));
    for (const GroupRows& group : report.groups)
        for (const Row& row : group.rows)
            writer.row(group, row);
    writer.end();
}
} // namespace report
