#include "report/Report.h"

#include <algorithm>

namespace report
{
const Value* Row::find(uint32_t attributeId) const
{
    const auto found = std::find_if(values.begin(), values.end(), [attributeId](const Value& value) {
        return value.attribute != nullptr && value.attribute->id == attributeId;
    });
    return found != values.end() ? &*found : nullptr;
}

const Value* Row::find(std::string_view element) const
{
    const auto found =
        std::find_if(values.begin(), values.end(), [element](const Value& value) { return value.name() == element; });
    return found != values.end() ? &*found : nullptr;
}

bool isFirstVersion(const GroupRows& group)
{
    return group.group != nullptr && group.version == 1 && group.group->id < FIRST_ADDED_GROUP_ID;
}

bool isKey(const GroupRows& group, const Value& value)
{
    if (value.attribute == nullptr || group.group == nullptr)
        return value.markedKey;
    return isFirstVersion(group) ? value.attribute->isFirstKey : value.attribute->isKey;
}

const GroupRows* Report::find(uint32_t groupId) const
{
    const auto found = std::find_if(groups.begin(), groups.end(), [groupId](const GroupRows& group) {
        return group.group != nullptr && group.group->id == groupId;
    });
    return found != groups.end() ? &*found : nullptr;
}

const GroupRows* Report::find(std::string_view element) const
{
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [element](const GroupRows& group) { return group.name() == element; });
    return found != groups.end() ? &*found : nullptr;
}
} // namespace report
