#include "report/Redact.h"

#include <algorithm>

namespace report
{
constexpr size_t kMostGroups = 10'000;

void RedactionGatherer::header(const Header& header)
{
    header_ = header;
    header_.versions.clear();
}

void RedactionGatherer::group(const GroupRows&, uint64_t)
{
    isNew_ = true;
}

void RedactionGatherer::row(const GroupRows& group, Row& row, const RowLines&)
{
    if (isNew_ && header_.versions.size() < kMostGroups)
        header_.versions.emplace_back(group.name(), group.version);
    else if (isNew_)
        failure_ = "more than " + std::to_string(kMostGroups) + " groups";
    isNew_ = false;
    if (!values_.gather(group, row))
        failure_ = "more than " + std::to_string(Dictionary::kMostPatterns) + " identifying values";
}

void RedactionWriter::row(const GroupRows& group, Row& row, const RowLines&)
{
    values_.replace(group, row);
    writer_.row(group, row);
}
} // namespace report
