#include "docs/generate/HostDocuments.h"

#include <set>
#include <string>

#include <nlohmann/json.hpp>

#include "com/VexCatalog.h"
#include "report/Catalog.h"

namespace
{
using Json = nlohmann::ordered_json;
using report::Attribute;
using report::catalog;
using report::Group;

// A number that is written otherwise than JSON writes it stays a string, as reports of other programs may have it; a
// plain one is a number. Enough digits to tell are nine: longer ones may not fit the type.
constexpr char kNoPlainNumber[] = "^(?!(0|[1-9][0-9]{0,8})$)";
constexpr char kDecimal[] = "^(0|[1-9][0-9]*)$";
constexpr char kDateTime[] = "^([0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}(Z|[+-][0-9]{2}:[0-9]{2})?)?$";

Json reference(const std::string& definition)
{
    return {{"$ref", "#/$defs/" + definition}};
}

Json numberType(uint64_t most)
{
    return {{"type", {"integer", "string"}}, {"minimum", 0}, {"maximum", most}, {"pattern", kNoPlainNumber}};
}

Json realType()
{
    return {{"type", {"number", "string"}}, {"pattern", kNoPlainNumber}};
}

// A value with a text is that text, another its number.
Json enumType(const vexEnumDef* values)
{
    Json texts = Json::array();
    std::set<std::string_view> known; // two values may have one text
    for (; values->value != VEX_END; ++values)
        if (known.insert(values->text).second)
            texts.push_back(values->text);
    return {{"anyOf", {{{"enum", texts}}, {{"type", "string"}, {"pattern", kDecimal}}}}};
}

Json wordType(const char* const* words)
{
    Json texts = Json::array();
    for (; *words != nullptr; ++words)
        texts.push_back(*words);
    return {{"enum", texts}};
}

Json valueType(const Attribute& attribute)
{
    if (attribute.words != nullptr)
        return wordType(attribute.words);
    if (attribute.isYesNo)
        return {{"type", "boolean"}};
    if (attribute.enums != nullptr)
        return enumType(attribute.enums);
    switch (attribute.type) {
    case VEX_STRING:
        return {{"type", "string"}, {"maxLength", attribute.maxLength}};
    case VEX_FLOAT:
    case VEX_DOUBLE:
        return reference("real");
    case VEX_DATETIME:
        return reference("dateTime");
    case VEX_UQUAD:
        return reference("quad");
    default:
        return reference("number");
    }
}

std::string descriptionOf(const Attribute& attribute)
{
    std::string description = attribute.name;
    if (!attribute.unit.empty())
        description += " in " + std::string(attribute.unit);
    return description;
}

// A row of a group of the catalog. What a later version of the group adds is a string to this one.
Json rowType(const Group& group)
{
    Json properties = Json::object();
    for (const Attribute& attribute : group.attributes) {
        Json type = valueType(attribute);
        type["description"] = descriptionOf(attribute);
        properties[attribute.element] = type;
    }
    properties["Sources"] = reference("sources");
    return {{"description", group.name},
            {"type", "object"},
            {"properties", properties},
            {"additionalProperties", {{"type", "string"}}}};
}

// A row of a group that the catalog does not know names its keys itself.
Json unknownRowType()
{
    return {{"type", "object"},
            {"properties",
             {{"$key", {{"type", "array"}, {"items", {{"type", "string"}}}, {"uniqueItems", true}}},
              {"Sources", reference("sources")}}},
            {"additionalProperties", {{"type", "string"}}}};
}

Json rowsOf(const std::string& definition)
{
    return {{"type", "array"}, {"items", reference(definition)}};
}

Json groupsType()
{
    Json properties = Json::object();
    for (const Group& group : catalog())
        properties[group.element] = rowsOf(group.element);
    return {{"type", "object"}, {"properties", properties}, {"additionalProperties", rowsOf("unknownRow")}};
}

Json definitions()
{
    Json types = {
        {"number", numberType(UINT32_MAX)},
        {"quad", numberType(UINT64_MAX)},
        {"real", realType()},
        {"dateTime", {{"type", "string"}, {"pattern", kDateTime}}},
        {"sources", {{"type", "object"}, {"additionalProperties", {{"type", "string"}}}}},
        {"unknownRow", unknownRowType()},
    };
    for (const Group& group : catalog())
        types[group.element] = rowType(group);
    return types;
}
} // namespace

void writeJsonSchema(std::ostream& out)
{
    const Json schema = {
        {"$schema", "https://json-schema.org/draft/2020-12/schema"},
        {"$comment", "Made by invhw_host_docs from the host catalog in report/catalog/: change that and build the "
                     "target update_docs."},
        {"title", "A report in the JSON form of invhwctl"},
        {"type", "object"},
        {"properties",
         {{"format", {{"const", "invhw-report"}}},
          {"formatVersion", {{"const", 1}}},
          {"program", {{"type", "string"}}},
          {"date", reference("dateTime")},
          {"versions", {{"type", "object"}, {"additionalProperties", {{"type", "integer"}, {"minimum", 1}}}}},
          {"groups", groupsType()}}},
        {"required", {"format", "formatVersion", "versions", "groups"}},
        {"additionalProperties", false},
        {"$defs", definitions()},
    };
    out << schema.dump(2) << '\n';
}
