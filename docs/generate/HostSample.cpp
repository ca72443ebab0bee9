#include "docs/generate/HostDocuments.h"

#include <string>
#include <vector>

#include "report/Writer.h"

namespace
{
using report::Attribute;
using report::Content;
using report::Group;

// As many characters as fit, among them what the forms must escape and one of two bytes.
std::string longestText(const Attribute& attribute)
{
    std::string text = std::string("A&B<C>]]> \"quoted\" \\").substr(0, attribute.maxLength - 1);
    text.append(attribute.maxLength - 1 - text.size(), '.');
    return text + "\u00E9";
}

Content largestValue(const Attribute& attribute)
{
    switch (attribute.type) {
    case VEX_STRING:
        return attribute.words != nullptr ? attribute.words[0] : longestText(attribute);
    case VEX_FLOAT:
    case VEX_DOUBLE:
        return -1.5;
    case VEX_DATETIME:
        return report::DateTime{2026, 11, 21, 11, 35, 34, 3600};
    case VEX_UQUAD:
        return uint64_t{UINT64_MAX};
    default:
        return uint64_t{attribute.isYesNo ? 1 : UINT32_MAX};
    }
}

// The texts that an attribute can have, each as what a collector writes for it.
std::vector<Content> listedValues(const Attribute& attribute)
{
    std::vector<Content> values;
    for (const char* const* word = attribute.words; word != nullptr && *word != nullptr; ++word)
        values.emplace_back(*word);
    for (const vexEnumDef* value = attribute.enums; value != nullptr && value->value != VEX_END; ++value)
        values.emplace_back(uint64_t{value->value});
    return values;
}

report::Value sampleValue(const Attribute& attribute, Content content)
{
    return {&attribute, {}, std::move(content), "/sys/\"a\" & <b>", false};
}

report::Row fullRow(const Group& group)
{
    report::Row row;
    for (const Attribute& attribute : group.attributes)
        row.values.push_back(sampleValue(attribute, largestValue(attribute)));
    return row;
}

// The i-th listed value of every attribute that has so many; empty when none has.
report::Row listedRow(const Group& group, size_t i)
{
    report::Row row;
    for (const Attribute& attribute : group.attributes)
        if (std::vector<Content> values = listedValues(attribute); i < values.size())
            row.values.push_back(sampleValue(attribute, std::move(values[i])));
    return row;
}
} // namespace

report::Report hostSample()
{
    report::Report sample;
    sample.program = "invhwctl 0.0.0";
    sample.date = report::DateTime{2026, 11, 21, 11, 35, 34, 0};
    for (const Group& group : report::catalog()) {
        report::GroupRows rows{&group, {}, group.version, {fullRow(group)}};
        for (size_t i = 0;; ++i) {
            rows.rows.push_back(listedRow(group, i));
            if (rows.rows.back().values.empty())
                break;
        }
        sample.groups.push_back(std::move(rows));
    }
    return sample;
}
