#include "report/JsonContent.h"
#include "report/Writer.h"

namespace report
{
using Json = nlohmann::ordered_json;

namespace
{
Json numberJson(const Attribute* attribute, uint64_t number)
{
    if (attribute == nullptr || attribute->enums == nullptr)
        return number;
    if (attribute->isYesNo && number <= 1)
        return number == 1;
    const char* text = enumText(attribute->enums, number);
    return text != nullptr ? Json(text) : Json(std::to_string(number));
}

// Key marks of a group that the catalog does not know; the catalog says those of the others.
Json unknownKeys(const Row& row)
{
    Json keys = Json::array();
    for (const Value& value : row.values)
        if (value.markedKey)
            keys.push_back(value.name());
    return keys;
}

Json sourcesOf(const Row& row)
{
    Json sources = Json::object();
    for (const Value& value : row.values)
        if (!value.source.empty())
            sources[std::string(value.name())] = value.source;
    return sources;
}
} // namespace

Json jsonContent(const Value& value)
{
    if (const auto* text = std::get_if<std::string>(&value.content))
        return *text;
    if (const auto* number = std::get_if<uint64_t>(&value.content))
        return numberJson(value.attribute, *number);
    if (const auto* real = std::get_if<double>(&value.content))
        return *real;
    return rfc3339(std::get<DateTime>(value.content));
}

std::string jsonLine(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void JsonWriter::begin(const Header& header)
{
    Json versions = Json::object();
    for (const auto& [element, version] : header.versions)
        versions[element] = version;
    out_ << "{\n\"format\": \"invhw-report\",\n\"formatVersion\": 1,\n\"program\": " << jsonLine(header.program);
    if (header.date)
        out_ << ",\n\"date\": " << jsonLine(rfc3339(*header.date));
    out_ << ",\n\"versions\": " << jsonLine(versions) << ",\n\"groups\": {";
}

void JsonWriter::row(const GroupRows& group, const Row& row)
{
    Json json = Json::object();
    for (const Value& value : row.values)
        json[std::string(value.name())] = jsonContent(value);
    if (group.group == nullptr)
        if (const Json keys = unknownKeys(row); !keys.empty())
            json["$key"] = keys;
    if (sources_)
        if (const Json sources = sourcesOf(row); !sources.empty())
            json["Sources"] = sources;
    if (group_ == group.name()) {
        out_ << ",\n";
    } else {
        out_ << (group_.empty() ? "\n" : "\n],\n") << jsonLine(group.name()) << ": [\n";
        group_ = group.name();
    }
    out_ << jsonLine(json);
}

void JsonWriter::end()
{
    out_ << (group_.empty() ? "}\n}\n" : "\n]\n}\n}\n");
    group_.clear();
}
} // namespace report
