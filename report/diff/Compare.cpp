#include "report/diff/Compare.h"

#include <algorithm>
#include <tuple>

#include "report/Content.h"
#include "report/Identity.h"
#include "report/Text.h"
#include "report/Writer.h"

namespace report
{
namespace
{
constexpr std::string_view kIndex = "Index";
constexpr std::string_view kDynamic = "Dynamic";

// The attribute that says that a row's addresses were given for a time; null in groups without addresses.
const Attribute* dynamicOf(const Group* group)
{
    const Attribute* dynamic = group != nullptr ? group->find(kDynamic) : nullptr;
    return dynamic != nullptr && dynamic->isYesNo ? dynamic : nullptr;
}

bool isDynamic(const Comparison& comparison, const Row& row)
{
    const Value* value = comparison.dynamic != nullptr ? row.find(comparison.dynamic->id) : nullptr;
    return value != nullptr && meaningOf(*value) == Content(uint64_t{1});
}

// Of a row that was read or of both rows of a pair.
bool isVolatile(const Attribute& attribute, bool isInDynamicRow)
{
    return attribute.isVolatile || (attribute.isVolatileIfDynamic && isInDynamicRow);
}

bool isCompared(const Comparison& comparison, const Value& value, bool isInDynamicRow)
{
    if (value.name() == kIndex || (comparison.acrossPrograms && value.content == Content(std::string())))
        return false; // invhw writes empty texts of what it does not know
    return value.attribute == nullptr || comparison.withVolatile || !isVolatile(*value.attribute, isInDynamicRow);
}

bool occurs(const DiffSide::Rows* rows, const Attribute& attribute)
{
    return rows != nullptr && attribute.position < rows->occurring.size() && rows->occurring[attribute.position];
}

bool canName(const Attribute& attribute)
{
    return attribute.element != kIndex && !attribute.isVolatile;
}

Name keyName(const Group& group, bool isFirstVersion)
{
    Name name;
    for (const Attribute& attribute : group.attributes)
        if ((isFirstVersion ? attribute.isFirstKey : attribute.isKey) && canName(attribute))
            name.attributes.push_back(&attribute);
    return name;
}

void addPairings(const Group& group, std::vector<Name>& names)
{
    for (const PairingDef& pairing : group.pairing) {
        Name name;
        name.isIdentity = true;
        for (const uint32_t id : pairing.ids)
            if (const Attribute* attribute = id != 0 ? group.find(id) : nullptr)
                name.attributes.push_back(attribute);
        names.push_back(std::move(name));
    }
}

void addKeys(const Group& group, std::vector<Name>& names)
{
    for (const bool isFirstVersion : {false, true}) {
        Name name = keyName(group, isFirstVersion);
        const bool isNew = std::none_of(names.begin(), names.end(), [&name](const Name& other) {
            return !other.isIdentity && other.attributes == name.attributes;
        });
        if (!name.attributes.empty() && isNew)
            names.push_back(std::move(name));
    }
}

// Of a name only what occurs in both reports counts; what pairs rows of one program's reports must all occur.
bool cutToCommon(const Comparison& comparison, Name& name)
{
    const size_t before = name.attributes.size();
    std::erase_if(name.attributes, [&comparison](const Attribute* attribute) {
        return !occurs(comparison.old, *attribute) || !occurs(comparison.now, *attribute);
    });
    const bool mayBeCut = comparison.acrossPrograms || !name.isIdentity;
    return name.attributes.size() == before || (mayBeCut && !name.attributes.empty());
}

// What a value means, whichever form it comes from. The two programs write addresses and UUIDs in different cases.
Content meaning(const Comparison& comparison, const Value& value)
{
    Content content = meaningOf(value);
    auto* text = std::get_if<std::string>(&content);
    if (comparison.acrossPrograms && text != nullptr && value.attribute != nullptr && value.attribute->isIdentifying)
        *text = lower(*text);
    return content;
}

std::string meaningText(const Comparison& comparison, const Value& value)
{
    Value shown;
    shown.content = meaning(comparison, value);
    return valueText(shown);
}

bool areSame(const Comparison& comparison, const Value& old, const Value& now)
{
    const Content a = meaning(comparison, old), b = meaning(comparison, now);
    const auto* oldTime = std::get_if<DateTime>(&a);
    const auto* newTime = std::get_if<DateTime>(&b);
    if (oldTime == nullptr || newTime == nullptr)
        return a == b;
    if (oldTime->offsetSeconds && newTime->offsetSeconds)
        return *oldTime == *newTime;
    DateTime local = *oldTime; // the XML form tells no offset
    local.offsetSeconds = newTime->offsetSeconds;
    return local == *newTime;
}

bool isBefore(const Value& a, const Value& b)
{
    const auto place = [](const Value& value) {
        return value.attribute != nullptr ? value.attribute->position : SIZE_MAX;
    };
    return std::make_tuple(place(a), a.name()) < std::make_tuple(place(b), b.name());
}

// What is compared of a row, in order.
std::vector<Value> comparedValues(const Comparison& comparison, Row&& row, bool isInDynamicRow)
{
    std::vector<Value> values;
    for (Value& value : row.values)
        if (isCompared(comparison, value, isInDynamicRow))
            values.push_back(std::move(value));
    std::sort(values.begin(), values.end(), isBefore);
    return values;
}

// Of a row that only one report has: what the other one could have.
std::vector<Value> valuesOfOne(const Comparison& comparison, const DiffSide::Rows* other, Row&& row)
{
    const bool isInDynamicRow = isDynamic(comparison, row);
    std::vector<Value> values = comparedValues(comparison, std::move(row), isInDynamicRow);
    if (comparison.acrossPrograms && other != nullptr)
        std::erase_if(values, [other](const Value& value) {
            return value.attribute == nullptr || !occurs(other, *value.attribute);
        });
    return values;
}
} // namespace

Comparison::Comparison(const DiffSide::Rows* oldRows, const DiffSide::Rows* newRows, bool isWithVolatile,
                       bool isAcrossPrograms)
    : old(oldRows), now(newRows), withVolatile(isWithVolatile), acrossPrograms(isAcrossPrograms),
      dynamic(dynamicOf(group()))
{
}

std::vector<Name> pairingNames(const Comparison& comparison, size_t& firstKey)
{
    std::vector<Name> names;
    if (comparison.group() == nullptr) {
        firstKey = 0;
        names.push_back({{}, true, false});
        return names;
    }
    std::vector<Name> keys;
    addPairings(*comparison.group(), names);
    addKeys(*comparison.group(), keys);
    std::erase_if(names, [&comparison](Name& name) { return !cutToCommon(comparison, name); });
    std::erase_if(keys, [&comparison](Name& name) { return !cutToCommon(comparison, name); });
    firstKey = names.size();
    names.insert(names.end(), keys.begin(), keys.end());
    return names;
}

std::vector<Name> shownNames(const Comparison& comparison)
{
    std::vector<Name> names;
    if (comparison.group() == nullptr) {
        names.push_back({{}, true, false});
        return names;
    }
    addKeys(*comparison.group(), names);
    addPairings(*comparison.group(), names);
    return names;
}

std::vector<Value> valuesOf(const Comparison& comparison, const Name& name, const Row& row)
{
    std::vector<Value> values;
    for (const Value& value : row.values)
        if (name.isMarked && value.markedKey && value.name() != kIndex)
            values.push_back(value);
    const bool isInDynamicRow = isDynamic(comparison, row);
    for (const Attribute* attribute : name.attributes) {
        const Value* value = row.find(attribute->id);
        if (value == nullptr || (name.isIdentity && attribute->isIdentifying && isPlaceholder(valueText(*value))))
            return {};
        if (!isVolatile(*attribute, isInDynamicRow))
            values.push_back(*value);
    }
    return values;
}

uint64_t hashOf(const Comparison& comparison, const std::vector<Value>& values)
{
    std::string text;
    for (const Value& value : values) {
        const std::string meaning = meaningText(comparison, value);
        text.append(value.name()).append("=" + std::to_string(meaning.size()) + ":" + meaning);
    }
    return values.empty() ? 0 : std::max<uint64_t>(std::hash<std::string>()(text), 1);
}

uint64_t hashOf(const Comparison& comparison, Row row)
{
    const bool isInDynamicRow = isDynamic(comparison, row);
    std::vector<Value> values = comparedValues(comparison, std::move(row), isInDynamicRow);
    if (comparison.acrossPrograms)
        std::erase_if(values, [&comparison](const Value& value) {
            return value.attribute == nullptr || !occurs(comparison.old, *value.attribute) ||
                   !occurs(comparison.now, *value.attribute);
        });
    return hashOf(comparison, values);
}

std::vector<ValueChange> valuesAdded(const Comparison& comparison, Row row)
{
    std::vector<ValueChange> changes;
    std::vector<Value> values = valuesOfOne(comparison, comparison.old, std::move(row));
    changes.reserve(values.size());
    for (Value& value : values)
        changes.push_back({std::nullopt, std::move(value)});
    return changes;
}

std::vector<ValueChange> valuesRemoved(const Comparison& comparison, Row row)
{
    std::vector<ValueChange> changes;
    std::vector<Value> values = valuesOfOne(comparison, comparison.now, std::move(row));
    changes.reserve(values.size());
    for (Value& value : values)
        changes.push_back({std::move(value), std::nullopt});
    return changes;
}

std::vector<ValueChange> valuesChanged(const Comparison& comparison, Row old, Row now)
{
    const bool areDynamic = isDynamic(comparison, old) && isDynamic(comparison, now);
    std::vector<Value> before = comparedValues(comparison, std::move(old), areDynamic);
    std::vector<Value> after = comparedValues(comparison, std::move(now), areDynamic);
    std::vector<ValueChange> changes;
    for (auto a = before.begin(), b = after.begin(); a != before.end() || b != after.end();) {
        ValueChange change;
        const bool isOld = b == after.end() || (a != before.end() && !isBefore(*b, *a));
        const bool isNew = a == before.end() || (b != after.end() && !isBefore(*a, *b));
        if (isOld)
            change.old = std::move(*a++);
        if (isNew)
            change.now = std::move(*b++);
        const bool isInBoth = isOld && isNew;
        if (isInBoth ? !areSame(comparison, *change.old, *change.now) : !comparison.acrossPrograms)
            changes.push_back(std::move(change));
    }
    return changes;
}
} // namespace report
