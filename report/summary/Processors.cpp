#include <algorithm>

#include "report/summary/Sections.h"

namespace report::summary
{
namespace
{
// What invhw knows of a processor, which has no model name, are maker and family.
std::string processorName(const Row& row)
{
    std::string model = textOf(row, PROCESSOR_MODEL_NAME);
    if (!model.empty())
        return model;
    return joined({textOf(row, PROCESSOR_MANUFACTURER), textOf(row, PROCESSOR_FAMILY)}, " ");
}

std::string frequencyText(const Row& row)
{
    uint64_t speed = numberOf(row, PROCESSOR_MAXIMUM_FREQUENCY).value_or(0);
    if (speed == 0)
        speed = numberOf(row, PROCESSOR_MAX_CLOCK_SPEED).value_or(0);
    return speed != 0 ? std::to_string(speed) + " MHz" : "";
}

void addTotal(SummarySection& section, const char* label, const std::vector<Row>& rows, uint32_t attribute)
{
    uint64_t total = 0;
    for (const Row& row : rows)
        total += std::min<uint64_t>(numberOf(row, attribute).value_or(0), UINT32_MAX);
    if (rows.size() > 1 && total != 0)
        addFact(section, label, std::to_string(total));
}

// Kernels begin the state of what is open with this word.
void addVulnerabilities(SummarySection& section, const Report& report)
{
    std::vector<std::string> open;
    for (const Row& row : rowsOf(report, GROUP_PROCESSOR_VULNERABILITY))
        if (textOf(row, PROCESSOR_VULNERABILITY_STATE).starts_with("Vulnerable"))
            open.push_back(textOf(row, PROCESSOR_VULNERABILITY_NAME));
    addFact(section, "Vulnerable to", joined(open, ", "), Tone::BAD);
    if (open.empty() && !rowsOf(report, GROUP_PROCESSOR_VULNERABILITY).empty())
        addFact(section, "Vulnerable to", "nothing that the kernel knows", Tone::GOOD);
}
} // namespace

SummarySection processorSection(const Report& report)
{
    SummarySection section{.id = "processors", .title = "Processors"};
    section.columns = {{"Socket"},      {"Model"},          {"Cores", true}, {"Threads", true},
                       {"Up to", true}, {"L3 cache", true}, {"Microcode"}};
    const std::vector<Row>& rows = rowsOf(report, GROUP_PROCESSOR);
    for (const Row& row : rows)
        section.lines.push_back({{{makersText(row, {PROCESSOR_SOCKET_NAME, PROCESSOR_INTERFACE})},
                                  {processorName(row)},
                                  {numberText(row, PROCESSOR_CORES)},
                                  {numberText(row, PROCESSOR_THREADS)},
                                  {frequencyText(row)},
                                  {sizeText(row, PROCESSOR_L3_CACHE, 1024)},
                                  {textOf(row, PROCESSOR_MICROCODE)}}});
    addTotal(section, "Cores", rows, PROCESSOR_CORES);
    addTotal(section, "Threads", rows, PROCESSOR_THREADS);
    addFact(section, "Virtualization", textOf(rows.empty() ? Row() : rows.front(), PROCESSOR_VIRTUALIZATION));
    addVulnerabilities(section, report);
    section.group = "Processor";
    return section;
}
} // namespace report::summary
