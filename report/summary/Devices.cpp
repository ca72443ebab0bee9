// What else is in or at the machine, and what the scan could not read.

#include <algorithm>

#include "report/Text.h"
#include "report/summary/Sections.h"

namespace report::summary
{
namespace
{
std::string batteryText(const Row& row)
{
    const auto full = numberOf(row, BATTERY_FULL_CAPACITY), design = numberOf(row, BATTERY_DESIGN_CAPACITY);
    std::string health;
    if (full && design && *design != 0 && *full <= *design)
        health = std::to_string(*full * 100 / *design) + "% of its first capacity";
    return joined({textOf(row, BATTERY_STATUS), health, numberText(row, BATTERY_CYCLE_COUNT, " cycles")}, ", ");
}

std::string monitorText(const Row& row)
{
    const std::string inches = textOf(row, MONITOR_APPROX_SIZE_INCHES);
    return joined({textOf(row, MONITOR_CONNECTOR), textOf(row, MONITOR_PREFERRED_MODE),
                   inches.empty() ? "" : inches + " in", makersText(row, {MONITOR_SERIAL_NUMBER})},
                  ", ");
}

void addLine(SummarySection& section, const char* kind, std::string name, std::string what)
{
    section.lines.push_back({{{kind}, {std::move(name)}, {std::move(what)}}});
}

// What one row of Scan Status tells: its notes, or how its collection ended.
std::vector<std::string> notesOf(const Row& row)
{
    const std::string result = textOf(row, SCAN_STATUS_RESULT), reason = textOf(row, SCAN_STATUS_REASON);
    const bool isEnded = result == "Refused" || result == "Timed Out" || result == "Failed";
    std::vector<std::string> notes;
    for (std::string_view rest = reason; !rest.empty();) {
        const size_t end = rest.find("; ");
        notes.emplace_back(rest.substr(0, end));
        rest = end == std::string_view::npos ? "" : rest.substr(end + 2);
    }
    if (isEnded && (notes.empty() || result != "Refused"))
        notes.push_back(result);
    return notes;
}
} // namespace

SummarySection deviceSection(const Report& report)
{
    SummarySection section{.id = "devices", .title = "Other devices"};
    section.columns = {{"Kind"}, {"Name"}, {"What"}};
    for (const Row& row : rowsOf(report, GROUP_VIDEO))
        addLine(section, "Graphics", textOf(row, VIDEO_ADAPTER_NAME),
                joined({sizeText(row, VIDEO_MEMORY, 1024), textOf(row, VIDEO_DRIVER)}, ", "));
    for (const Row& row : rowsOf(report, GROUP_MONITOR))
        addLine(section, "Monitor",
                joined({textOf(row, MONITOR_MANUFACTURER_CODENAME), textOf(row, MONITOR_NAME)}, " "), monitorText(row));
    for (const Row& row : rowsOf(report, GROUP_BATTERY))
        addLine(section, "Battery",
                joined({makersText(row, {BATTERY_MANUFACTURER}), makersText(row, {BATTERY_MODEL})}, " "),
                batteryText(row));
    for (const Row& row : rowsOf(report, GROUP_PRINTER))
        addLine(section, "Printer", textOf(row, PRINTER_NAME),
                joined({textOf(row, PRINTER_DRIVER_NAME), textOf(row, PRINTER_LOCATION)}, ", "));
    return section;
}

SummarySection unreadSection(const Report& report)
{
    SummarySection section{.id = "unread", .title = "Not read"};
    section.columns = {{"What"}, {"Missing in"}};
    std::vector<std::pair<std::string, std::vector<std::string>>> groupsOf; // by note, in the report's order
    for (const Row& row : rowsOf(report, GROUP_SCAN_STATUS))
        for (const std::string& note : notesOf(row)) {
            auto found =
                std::find_if(groupsOf.begin(), groupsOf.end(), [&](const auto& each) { return each.first == note; });
            if (found == groupsOf.end()) {
                if (groupsOf.size() >= kMostLines) {
                    ++section.left;
                    continue;
                }
                found = groupsOf.insert(found, {note, {}});
            }
            found->second.push_back(textOf(row, SCAN_STATUS_GROUP_NAME));
        }
    for (const auto& [note, groups] : groupsOf)
        section.lines.push_back({{{note, Tone::WARN}, {joined(groups, ", ")}}});
    if (section.lines.empty() && !rowsOf(report, GROUP_SCAN_STATUS).empty())
        addFact(section, "Refused", "nothing", Tone::GOOD);
    section.group = "Scan Status";
    return section;
}
} // namespace report::summary
