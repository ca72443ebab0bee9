#include "report/summary/Sections.h"

#include <algorithm>
#include <cstdio>

#include "report/Content.h"
#include "report/Identity.h"
#include "report/Text.h"
#include "report/Writer.h"

namespace report::summary
{
namespace
{
constexpr uint32_t kGroups[] = {
    GROUP_COMPONENTID,
    GROUP_SMBIOS,
    GROUP_SYSTEM_ENCLOSURE,
    GROUP_FIRMWARE,
    GROUP_TPM,
    GROUP_OPERATING_SYSTEM,
    GROUP_PROCESSOR,
    GROUP_PROCESSOR_VULNERABILITY,
    GROUP_MEMORY,
    GROUP_MEMORY_MODULES,
    GROUP_STORAGE,
    GROUP_DISK_PARTITION,
    GROUP_LOGICAL_DRIVE,
    GROUP_PARTITION,
    GROUP_NETWORK_ADAPTER,
    GROUP_IP_ADDRESS,
    GROUP_PC_SYSTEM_PARAMS,
    GROUP_UNIX_SYSTEM_PARAMS,
    GROUP_SCAN_INFO,
    GROUP_SCAN_STATUS,
    GROUP_VIDEO,
    GROUP_MONITOR,
    GROUP_BATTERY,
    GROUP_PRINTER,
    GROUP_SITE,
};
} // namespace

bool isLookedAt(const Group& group)
{
    return std::find(std::begin(kGroups), std::end(kGroups), group.id) != std::end(kGroups);
}

const std::vector<Row>& rowsOf(const Report& report, uint32_t group)
{
    static const std::vector<Row> kNone;
    const GroupRows* rows = report.find(group);
    return rows != nullptr ? rows->rows : kNone;
}

const Row& firstRow(const Report& report, uint32_t group)
{
    static const Row kEmpty;
    const std::vector<Row>& rows = rowsOf(report, group);
    return rows.empty() ? kEmpty : rows.front();
}

std::string textOf(const Row& row, uint32_t attribute)
{
    const Value* value = row.find(attribute);
    if (value == nullptr)
        return {};
    if (const auto* time = std::get_if<DateTime>(&value->content))
        return rfc3339(*time);
    return std::string(trimmed(valueText(*value)));
}

std::string makersText(const Row& row, std::initializer_list<uint32_t> attributes)
{
    for (const uint32_t attribute : attributes)
        if (std::string text = textOf(row, attribute); !isPlaceholder(text))
            return text;
    return {};
}

std::optional<uint64_t> numberOf(const Row& row, uint32_t attribute)
{
    const Value* value = row.find(attribute);
    if (value == nullptr)
        return std::nullopt;
    const Content content = meaningOf(*value);
    const auto* number = std::get_if<uint64_t>(&content);
    return number != nullptr ? std::optional<uint64_t>(*number) : std::nullopt;
}

std::string numberText(const Row& row, uint32_t attribute, std::string_view unit)
{
    const uint64_t number = numberOf(row, attribute).value_or(0);
    return number != 0 ? std::to_string(number) + std::string(unit) : "";
}

std::string sizeText(uint64_t bytes)
{
    constexpr const char* kUnits[] = {"B", "KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    auto size = static_cast<double>(bytes);
    size_t unit = 0;
    for (; size >= 1000 && unit + 1 < std::size(kUnits); ++unit)
        size /= 1024;
    const bool isWhole = unit == 0 || size >= 100 || size == static_cast<double>(static_cast<uint64_t>(size));
    char text[48];
    snprintf(text, sizeof text, "%.*f %s", isWhole ? 0 : 1, size, kUnits[unit]);
    return text;
}

std::string sizeText(const Row& row, uint32_t attribute, uint64_t unit)
{
    const auto number = numberOf(row, attribute);
    return number && *number != 0 && *number <= UINT64_MAX / unit ? sizeText(*number * unit) : "";
}

SummaryCell usedOf(uint64_t bytes, uint64_t freeBytes)
{
    constexpr double kFull = 0.95, kFilling = 0.85;
    const double share =
        bytes != 0 && freeBytes <= bytes ? static_cast<double>(bytes - freeBytes) / static_cast<double>(bytes) : 0;
    char percent[16];
    snprintf(percent, sizeof percent, "%.0f%%", share * 100);
    const Tone tone = share >= kFull ? Tone::BAD : share >= kFilling ? Tone::WARN : Tone::PLAIN;
    return {std::string(percent) + " of " + sizeText(bytes), tone, share};
}

std::string joined(const std::vector<std::string>& texts, std::string_view separator)
{
    std::string all;
    for (auto text = texts.begin(); text != texts.end(); ++text)
        if (!text->empty() && std::find(texts.begin(), text, *text) == text)
            all += (all.empty() ? "" : std::string(separator)) + *text;
    return all;
}

void addFact(SummarySection& section, const char* label, std::string text, Tone tone)
{
    if (!text.empty())
        section.facts.push_back({label, {std::move(text), tone}});
}
} // namespace report::summary
