#include <algorithm>
#include <map>

#include "report/summary/Sections.h"

namespace report::summary
{
namespace
{
enum Column { INTERFACE, KIND, STATE, SPEED, HARDWARE, ADDRESSES, MODEL, COLUMNS };
constexpr size_t kMostAddresses = 8; // in one line

std::string addressText(const Row& row)
{
    const std::string address = textOf(row, IP_ADDRESS_ADDRESS);
    const auto prefix = numberOf(row, IP_ADDRESS_PREFIX_LENGTH);
    return address.empty() || !prefix ? address : address + '/' + std::to_string(*prefix);
}

Tone stateTone(const std::string& state)
{
    return state == "up" ? Tone::GOOD : state == "down" ? Tone::QUIET : Tone::PLAIN;
}

SummaryLine adapterLine(const Row& row)
{
    SummaryLine line;
    const std::string kind = textOf(row, NETWORK_ADAPTER_KIND), state = textOf(row, NETWORK_ADAPTER_LINK_STATE);
    const std::string current = textOf(row, NETWORK_ADAPTER_CURRENT_ADDRESS);
    const std::string interface = textOf(row, NETWORK_ADAPTER_INTERFACE);
    const std::string model = textOf(row, NETWORK_ADAPTER_MODEL);
    line.cells = {
        {interface.empty() ? model : interface},
        {kind.empty() ? textOf(row, NETWORK_ADAPTER_TYPE) : kind},
        {state, stateTone(state)},
        {numberText(row, NETWORK_ADAPTER_SPEED, " Mbit/s")},
        {current.empty() ? textOf(row, NETWORK_ADAPTER_PERMANENT_ADDRESS) : current},
        {},
        {interface.empty() || model == interface ? "" : model},
    };
    return line;
}

// The addresses of one interface, in one text.
std::string addressesText(const std::vector<std::string>& addresses)
{
    const size_t shown = std::min(addresses.size(), kMostAddresses);
    std::string text = joined({addresses.begin(), addresses.begin() + static_cast<ptrdiff_t>(shown)}, " ");
    return shown < addresses.size() ? text + " and " + std::to_string(addresses.size() - shown) + " more" : text;
}

std::string distinct(const std::vector<Row>& rows, std::initializer_list<uint32_t> attributes)
{
    constexpr size_t kMost = 8;
    std::vector<std::string> texts;
    for (const Row& row : rows)
        for (const uint32_t attribute : attributes)
            if (const std::string text = textOf(row, attribute);
                texts.size() < kMost && std::find(texts.begin(), texts.end(), text) == texts.end())
                texts.push_back(text);
    return joined(texts, ", ");
}

void addAddresses(SummarySection& section, const std::vector<Row>& rows)
{
    std::map<std::string, std::vector<std::string>> addresses; // by interface
    for (const Row& row : rows)
        addresses[textOf(row, IP_ADDRESS_INTERFACE)].push_back(addressText(row));
    for (SummaryLine& line : section.lines)
        if (const auto found = addresses.find(line.cells[INTERFACE].text); found != addresses.end()) {
            line.cells[ADDRESSES].text = addressesText(found->second);
            addresses.erase(found);
        }
    for (const auto& [interface, texts] : addresses) { // of links that the report does not tell
        SummaryLine line;
        line.cells.resize(COLUMNS);
        line.cells[INTERFACE].text = interface;
        line.cells[ADDRESSES].text = addressesText(texts);
        section.lines.push_back(std::move(line));
    }
}
} // namespace

SummarySection networkSection(const Report& report)
{
    SummarySection section{.id = "network", .title = "Network"};
    const std::vector<Row>& rows = rowsOf(report, GROUP_IP_ADDRESS);
    addFact(section, "Domain", distinct(rows, {IP_ADDRESS_DOMAIN}));
    addFact(section, "Gateway", distinct(rows, {IP_ADDRESS_GATEWAY}));
    addFact(section, "Name servers", distinct(rows, {IP_ADDRESS_PRIMARY_DNS, IP_ADDRESS_SECONDARY_DNS}));
    section.columns = {{"Interface"},        {"Kind"},      {"State"}, {"Speed", true},
                       {"Hardware address"}, {"Addresses"}, {"Model"}};
    for (const Row& row : rowsOf(report, GROUP_NETWORK_ADAPTER))
        section.lines.push_back(adapterLine(row));
    addAddresses(section, rows);
    section.group = "Network Adapter";
    return section;
}
} // namespace report::summary
