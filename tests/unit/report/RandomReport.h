#pragma once

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "report/Report.h"
#include "report/Writer.h"

/// Random reports as `invhwctl scan` could write them: groups, attributes, types, lengths and lists of words as the
/// catalog has them, keys unique, texts with every character that a form must escape. The same seed gives the same
/// reports.
///
///     RandomReport random(42);
///     const report::Report a = random.report();
///     report::Report b = a;
///     random.change(b.groups[0].rows[0], b.groups[0]);  // one value of a row that is no key
class RandomReport
{
public:
    explicit RandomReport(uint32_t seed) : random_(seed) {}

    /// Some of the groups, each with up to so many rows.
    report::Report report(size_t mostRows = 4)
    {
        report::Report made;
        made.program = "invhwctl 5.0.0";
        made.date = dateTime();
        for (const report::Group& group : report::catalog())
            if (oneIn(2))
                made.groups.push_back(groupRows(group, 1 + below(mostRows)));
        return made;
    }

    /// Rows of one group, no two with the same keys.
    report::GroupRows groupRows(const report::Group& group, size_t rows)
    {
        report::GroupRows made{&group, {}, group.version, {}};
        std::set<std::string> keys;
        for (size_t i = 0; i < rows; ++i) {
            report::Row row = this->row(group);
            std::string key;
            for (const report::Value& value : row.values)
                key += isKey(made, value) ? valueText(value) + '\n' : "";
            if (key.empty() || keys.insert(key).second)
                made.rows.push_back(std::move(row));
        }
        return made;
    }

    /// A row that has all keys and some other attributes.
    report::Row row(const report::Group& group)
    {
        report::Row made;
        for (const report::Attribute& attribute : group.attributes)
            if (attribute.isKey || !oneIn(3))
                made.values.push_back({&attribute, {}, content(attribute), oneIn(2) ? text(40) : "", attribute.isKey});
        return made;
    }

    /// Another value of one attribute that is no key; false when the row has none.
    bool change(report::Row& row, const report::GroupRows& group)
    {
        std::vector<report::Value*> others;
        for (report::Value& value : row.values)
            if (!isKey(group, value))
                others.push_back(&value);
        if (others.empty())
            return false;
        report::Value& changed = *others[below(others.size())];
        const std::string before = valueText(changed);
        for (int i = 0; i < 100 && valueText(changed) == before; ++i)
            changed.content = content(*changed.attribute);
        return valueText(changed) != before;
    }

    report::Content content(const report::Attribute& attribute)
    {
        switch (attribute.type) {
        case VEX_STRING:
            return attribute.words != nullptr ? word(attribute.words) : text(std::min(attribute.maxLength, 60U));
        case VEX_DATETIME:
            return dateTime();
        case VEX_FLOAT:
        case VEX_DOUBLE:
            return static_cast<double>(static_cast<int64_t>(random_()) - INT32_MAX) / 64;
        case VEX_UQUAD:
            return (uint64_t{random_()} << 32U | random_()) >> below(64);
        default:
            return attribute.isYesNo ? uint64_t{below(2)} : number(attribute.enums);
        }
    }

    size_t below(size_t end) { return random_() % end; }
    bool oneIn(size_t n) { return below(n) == 0; }

private:
    // Up to so many characters, seldom none.
    std::string text(size_t most)
    {
        constexpr std::string_view kPieces[] = {"a",
                                                "b",
                                                "Z",
                                                "7",
                                                " ",
                                                "&",
                                                "<",
                                                ">",
                                                "]]>",
                                                "\"",
                                                "'",
                                                "\\",
                                                "\t",
                                                "\n",
                                                "\r",
                                                "/",
                                                ",",
                                                "=",
                                                "\xC3\xA9",
                                                "\xE2\x82\xAC",
                                                "\xF0\x9F\x98\x80"};
        std::string made;
        for (size_t left = oneIn(10) ? 0 : 1 + below(most); left > 0;) {
            const std::string_view piece = kPieces[below(std::size(kPieces))];
            const size_t characters = piece == "]]>" ? 3 : 1;
            if (characters <= left)
                made += piece;
            left -= std::min(characters, left);
        }
        return made;
    }
    std::string word(const char* const* words)
    {
        size_t count = 0;
        while (words[count] != nullptr)
            ++count;
        return words[below(count)];
    }
    uint64_t number(const vexEnumDef* enums)
    {
        size_t count = 0;
        while (enums != nullptr && enums[count].value != VEX_END)
            ++count;
        return count != 0 && !oneIn(5) ? enums[below(count)].value : random_() >> below(32);
    }
    report::DateTime dateTime()
    {
        report::DateTime made{static_cast<int32_t>(1970 + below(130)), 0, 0, 0, 0, 0, {}};
        made.month = static_cast<uint8_t>(1 + below(12));
        made.day = static_cast<uint8_t>(1 + below(28));
        made.hour = static_cast<uint8_t>(below(24));
        made.minute = static_cast<uint8_t>(below(60));
        made.second = static_cast<uint8_t>(below(60));
        if (oneIn(2))
            made.offsetSeconds = (static_cast<int32_t>(below(53)) - 26) * 1800;
        return made;
    }

    std::mt19937 random_;
};
