#include <algorithm>

#include "report/summary/Sections.h"

namespace report::summary
{
namespace
{
constexpr uint64_t kKilobyte = 1024, kMegabyte = 1024 * kKilobyte;

std::string speedText(const Row& row)
{
    const std::string configured = numberText(row, MEMORY_MODULES_CONFIGURED_SPEED, " MT/s");
    return configured.empty() ? numberText(row, MEMORY_MODULES_SPEED, " MT/s") : configured;
}

SummaryLine moduleLine(const Row& row)
{
    const std::string slot =
        joined({textOf(row, MEMORY_MODULES_SOCKET_NAME), textOf(row, MEMORY_MODULES_BANK_NAME)}, ", ");
    const std::string size = sizeText(row, MEMORY_MODULES_MODULE_SIZE_MB, kMegabyte);
    if (size.empty())
        return {{{slot, Tone::QUIET}, {"empty", Tone::QUIET}, {}, {}, {}, {}, {}}};
    return {{{slot},
             {size},
             {textOf(row, MEMORY_MODULES_MEMORY_TYPE)},
             {speedText(row)},
             {makersText(row, {MEMORY_MODULES_MANUFACTURER})},
             {makersText(row, {MEMORY_MODULES_PART_NUMBER})},
             {makersText(row, {MEMORY_MODULES_SERIAL_NUMBER})}}};
}

// The first number that the row has.
std::optional<uint64_t> firstNumber(const Row& row, std::initializer_list<uint32_t> attributes)
{
    for (const uint32_t attribute : attributes)
        if (const auto number = numberOf(row, attribute))
            return number;
    return std::nullopt;
}

// Both in kB.
void addUsed(SummarySection& section, const char* label, std::optional<uint64_t> total, std::optional<uint64_t> left)
{
    if (!total || *total == 0 || *total > UINT64_MAX / kKilobyte)
        return;
    if (left && *left <= *total)
        section.facts.push_back({label, usedOf(*total * kKilobyte, *left * kKilobyte)});
    else
        addFact(section, label, sizeText(*total * kKilobyte));
}
} // namespace

SummarySection memorySection(const Report& report)
{
    SummarySection section{.id = "memory", .title = "Memory"};
    const Row& memory = firstRow(report, GROUP_MEMORY);
    addFact(section, "Installed", sizeText(memory, MEMORY_INSTALLED_MB, kMegabyte));
    addUsed(section, "For programs", numberOf(memory, MEMORY_TOTAL_PHYSICAL),
            firstNumber(memory, {MEMORY_AVAILABLE, MEMORY_FREE_PHYSICAL}));
    addUsed(section, "Swap", firstNumber(memory, {MEMORY_SWAP_TOTAL, MEMORY_TOTAL_VIRTUAL}),
            firstNumber(memory, {MEMORY_SWAP_FREE, MEMORY_FREE_VIRTUAL}));
    addFact(section, "At most", sizeText(memory, MEMORY_MAX_MEMORY_MB, kMegabyte));
    const std::vector<Row>& modules = rowsOf(report, GROUP_MEMORY_MODULES);
    const auto filled = std::count_if(modules.begin(), modules.end(), [](const Row& row) {
        return numberOf(row, MEMORY_MODULES_MODULE_SIZE_MB).value_or(0) != 0;
    });
    if (!modules.empty())
        addFact(section, "Slots", std::to_string(filled) + " of " + std::to_string(modules.size()) + " in use");
    section.columns = {{"Slot"},         {"Size", true},  {"Type"},         {"Speed", true},
                       {"Manufacturer"}, {"Part number"}, {"Serial number"}};
    for (const Row& row : modules)
        section.lines.push_back(moduleLine(row));
    section.group = "Memory Modules";
    return section;
}
} // namespace report::summary
