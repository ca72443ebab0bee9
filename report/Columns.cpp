#include "report/Columns.h"

#include "report/Text.h"

namespace report
{
void Columns::add(const Value& value)
{
    if (value.attribute != nullptr)
        known_.emplace(value.attribute->position, value.attribute);
    else
        other_.emplace(value.element, other_.size());
}

std::optional<size_t> Columns::column(const Value& value) const
{
    if (value.attribute != nullptr) {
        const auto found = known_.find(value.attribute->position);
        return found != known_.end() ? std::optional<size_t>(std::distance(known_.begin(), found)) : std::nullopt;
    }
    const auto found = other_.find(value.element);
    return found != other_.end() ? std::optional<size_t>(known_.size() + found->second) : std::nullopt;
}

std::vector<std::string> Columns::names() const
{
    std::vector<std::string> names;
    for (const auto& [position, attribute] : known_)
        names.push_back(attribute->element);
    names.resize(size());
    for (const auto& [element, column] : other_)
        names[known_.size() + column] = element;
    return names;
}

std::vector<const Attribute*> Columns::attributes() const
{
    std::vector<const Attribute*> attributes;
    for (const auto& [position, attribute] : known_)
        attributes.push_back(attribute);
    attributes.resize(size());
    return attributes;
}

std::vector<std::string> Columns::headings() const
{
    std::vector<std::string> headings = names();
    size_t column = 0;
    for (const auto& [position, attribute] : known_) {
        headings[column] = attribute->name;
        if (!attribute->unit.empty() && !lower(attribute->name).ends_with(lower(attribute->unit)))
            headings[column] += " (" + std::string(attribute->unit) + ')';
        ++column;
    }
    return headings;
}

void ColumnsSink::row(const GroupRows& group, Row& row, const RowLines&)
{
    if (!failure.empty())
        return;
    Columns& columns = groups[std::string(group.name())];
    for (const Value& value : row.values)
        columns.add(value);
    if (groups.size() > kMostGroups)
        failure = "more than " + std::to_string(kMostGroups) + " groups";
    if (columns.size() > kMostColumns)
        failure = std::string(group.name()) + " has more than " + std::to_string(kMostColumns) + " attributes";
}
} // namespace report
