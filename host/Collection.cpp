#include "host/Collection.h"

#include <algorithm>
#include <cmath>

#include "report/Utf8.h"

namespace host
{
namespace
{
// Whether a value of a type can be this.
bool fits(VexType type, const report::Content& content)
{
    switch (type) {
    case VEX_STRING:
    case VEX_OCTETSTRING:
        return std::holds_alternative<std::string>(content);
    case VEX_FLOAT:
    case VEX_DOUBLE:
        return std::holds_alternative<double>(content);
    case VEX_DATETIME:
        return std::holds_alternative<report::DateTime>(content);
    default:
        return std::holds_alternative<uint64_t>(content);
    }
}
} // namespace

RowBuilder::RowBuilder(uint32_t group) : group_(*report::findGroup(group)) {}

RowBuilder::RowBuilder(uint32_t group, report::Row&& row) : group_(*report::findGroup(group)), row_(std::move(row)) {}

// Values stand in the catalog's order.
void RowBuilder::put(uint32_t attribute, report::Content content, std::string_view source)
{
    constexpr size_t kUsualValues = 8;
    const report::Attribute* definition = group_.find(attribute);
    if (definition == nullptr || !fits(definition->type, content))
        return;
    if (row_.values.empty())
        row_.values.reserve(kUsualValues);
    const auto place = std::lower_bound(
        row_.values.begin(), row_.values.end(), definition->position,
        [](const report::Value& value, size_t position) { return value.attribute->position < position; });
    report::Value value{definition, {}, std::move(content), report::validUtf8(source), false};
    if (place != row_.values.end() && place->attribute == definition)
        *place = std::move(value);
    else
        row_.values.insert(place, std::move(value));
}

RowBuilder& RowBuilder::text(uint32_t attribute, std::string_view value, std::string_view source)
{
    const report::Attribute* definition = group_.find(attribute);
    if (value.empty() || definition == nullptr)
        return *this;
    std::string valid = report::validUtf8(value);
    if (definition->maxLength != 0)
        valid.resize(report::firstCharacters(valid, definition->maxLength).size());
    put(attribute, std::move(valid), source);
    return *this;
}

RowBuilder& RowBuilder::text(uint32_t attribute, const MaybeFact& fact)
{
    return fact ? text(attribute, std::string_view(fact->value), fact->source) : *this;
}

RowBuilder& RowBuilder::number(uint32_t attribute, std::optional<uint64_t> value, std::string_view source)
{
    const report::Attribute* definition = group_.find(attribute);
    if (!value || definition == nullptr)
        return *this;
    const uint64_t most = definition->type == VEX_UQUAD ? UINT64_MAX : UINT32_MAX;
    put(attribute, std::min(*value, most), source);
    return *this;
}

RowBuilder& RowBuilder::yesNo(uint32_t attribute, std::optional<bool> value, std::string_view source)
{
    return value ? number(attribute, static_cast<uint64_t>(*value), source) : *this;
}

RowBuilder& RowBuilder::real(uint32_t attribute, std::optional<double> value, std::string_view source)
{
    // As many digits as the XML form has, so that all forms of a report say the same.
    constexpr double kUnit = 1e6;
    if (value && std::isfinite(*value))
        put(attribute, std::abs(*value) < 1e9 ? std::round(*value * kUnit) / kUnit : *value, source);
    return *this;
}

RowBuilder& RowBuilder::dateTime(uint32_t attribute, const std::optional<report::DateTime>& value,
                                 std::string_view source)
{
    if (value)
        put(attribute, *value, source);
    return *this;
}
} // namespace host
