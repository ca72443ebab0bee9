#include "report/Check.h"

#include <algorithm>

#include "report/CheckValue.h"
#include "report/read/RowMaker.h"

namespace report
{
namespace
{
constexpr Rule kRules[] = {
    {"well-formed", "the file is a report in the XML or in the JSON form"},
    {"cut-off", "the file goes on to the end of its report"},
    {"code-set", "the file is UTF-8, without characters that XML does not allow"},
    {"size", "texts, tags, rows and their numbers are within the bounds of readers"},
    {"group-known", "every group is one of the catalog"},
    {"group-version", "a group's version is one that the catalog knows"},
    {"group-order", "rows of a group stand together, groups in the catalog's order"},
    {"attribute-repeated", "no attribute comes twice in a row"},
    {"attribute-known", "every attribute of a known group is one of the catalog"},
    {"attribute-order", "the attributes of a row stand in the catalog's order (from version 2 on)"},
    {"key-marked", "key attributes are marked, and no others"},
    {"key-missing", "a row of a group with keys has one of them"},
    {"key-unique", "no two rows of a group have the same keys"},
    {"type", "numbers are numbers, yes/no attributes Yes or No"},
    {"range", "numbers fit their type; from version 2 on none is negative"},
    {"number-form", "numbers are written as their type writes them: no needless zeros, a decimal point"},
    {"length", "texts are no longer than the catalog says (from version 2 on)"},
    {"enumeration", "values of enumerations are their texts, or numbers that have no text"},
    {"word", "attributes with a closed list of words have one of these"},
    {"date-time", "date-times are empty or exist, in the form of their file"},
};

constexpr size_t kMostGroups = 10'000;

constexpr size_t rule(std::string_view name)
{
    size_t i = 0;
    while (i + 1 < std::size(kRules) && name != kRules[i].name)
        ++i;
    return i;
}

size_t ruleOf(ReadResult result, ProblemKind kind)
{
    if (result == ReadResult::CUT_OFF)
        return rule("cut-off");
    switch (kind) {
    case ProblemKind::CODE_SET:
        return rule("code-set");
    case ProblemKind::SIZE:
        return rule("size");
    case ProblemKind::REPEATED:
        return rule("attribute-repeated");
    default:
        return rule("well-formed");
    }
}
} // namespace

std::span<const Rule> checkRules()
{
    return kRules;
}

void Checker::tell(size_t ruleIndex, uint64_t line, std::string_view attribute, std::string message)
{
    found_({&kRules[ruleIndex], line, group_, row_, std::string(attribute), std::move(message)});
}

void Checker::checkOrder(const GroupRows& group, uint64_t line)
{
    if (seen_->rows != 0)
        tell(rule("group-order"), line, "", "rows of this group stand before other groups too");
    if (group.group == nullptr)
        return;
    if (isBehindGroup_ && group.group->position < lastPosition_)
        tell(rule("group-order"), line, "", "expected before " + catalog()[lastPosition_].element);
    isBehindGroup_ = true;
    lastPosition_ = group.group->position;
}

void Checker::group(const GroupRows& group, uint64_t line)
{
    group_ = group.name();
    row_ = 0;
    auto found = groups_.find(group.name());
    if (found == groups_.end()) {
        if (groups_.size() >= kMostGroups)
            groups_.clear(); // of a file that has so many, nothing but memory is lost
        found = groups_.emplace(group_, Seen()).first;
    }
    seen_ = &found->second;
    checkOrder(group, line);
    row_ = seen_->rows;
    if (group.group == nullptr)
        tell(rule("group-known"), line, "", "a group that the catalog does not have");
    else if (group.version == 0 || group.version > group.group->version)
        tell(rule("group-version"), line, "",
             "expected version 1 to " + std::to_string(group.group->version) + ", found " +
                 std::to_string(group.version));
}

void Checker::row(const GroupRows& group, Row& row, const RowLines& lines)
{
    row_ = ++seen_->rows;
    for (size_t i = 0; i < row.values.size(); ++i) {
        checkMark(group, row.values[i], lines.values[i]);
        checkValue(group, row.values[i], lines.values[i]);
    }
    checkAttributeOrder(group, row, lines);
    checkKeys(group, row, lines);
}

void Checker::checkMark(const GroupRows& group, const Value& value, uint64_t line)
{
    if (group.group == nullptr || value.attribute == nullptr || value.markedKey == isKey(group, value))
        return;
    tell(rule("key-marked"), line, value.name(),
         value.markedKey ? "marked as a key and none" : "a key without its mark");
}

void Checker::checkValue(const GroupRows& group, const Value& value, uint64_t line)
{
    if (value.attribute == nullptr) {
        if (group.group != nullptr)
            tell(rule("attribute-known"), line, value.name(), "an attribute that the catalog does not have");
        return;
    }
    const ValueFault fault = faultOf(value, isFirstVersion(group));
    if (fault.rule != nullptr)
        tell(rule(fault.rule), line, value.name(), "expected " + fault.expected + ", found " + shown(valueText(value)));
}

void Checker::checkAttributeOrder(const GroupRows& group, const Row& row, const RowLines& lines)
{
    if (group.group == nullptr || isFirstVersion(group))
        return; // invhw adds attributes as it finds them
    const Attribute* last = nullptr;
    for (size_t i = 0; i < row.values.size(); ++i) {
        const Attribute* attribute = row.values[i].attribute;
        if (attribute == nullptr)
            continue;
        if (last != nullptr && attribute->position < last->position) {
            tell(rule("attribute-order"), lines.values[i], attribute->element, "expected before " + last->element);
            return;
        }
        last = attribute;
    }
}

void Checker::checkKeys(const GroupRows& group, const Row& row, const RowLines& lines)
{
    const bool hasKeys =
        group.group != nullptr && std::any_of(group.group->attributes.begin(), group.group->attributes.end(),
                                              [first = isFirstVersion(group)](const Attribute& attribute) {
                                                  return first ? attribute.isFirstKey : attribute.isKey;
                                              });
    const bool has =
        std::any_of(row.values.begin(), row.values.end(), [&group](const Value& value) { return isKey(group, value); });
    if (has)
        checkUnique(group, row, lines);
    else if (hasKeys)
        tell(rule("key-missing"), lines.row, "", "expected a key attribute, found none");
}

// Two rows with one hash are taken for the same: of ten million rows that is one in a million times wrong.
void Checker::checkUnique(const GroupRows& group, const Row& row, const RowLines& lines)
{
    std::string keys;
    for (const Value& value : row.values) {
        if (!isKey(group, value))
            continue;
        const std::string text = valueText(value);
        keys.append(value.name()).append("=" + std::to_string(text.size()) + ":" + text);
    }
    if (!seen_->keys.insert(std::hash<std::string>()(keys)).second)
        tell(rule("key-unique"), lines.row, "", "a row before it has the same keys");
}

void Checker::end(ReadResult result, const ReadProblem& problem)
{
    if (result == ReadResult::WHOLE || result == ReadResult::UNREADABLE)
        return;
    found_({&kRules[ruleOf(result, problem.kind)], problem.line, problem.group, problem.row, problem.attribute,
            problem.message});
}
} // namespace report
