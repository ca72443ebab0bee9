#include "host/display/DisplayCards.h"

#include "host/Root.h"
#include "host/text/DevicePath.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr const char* kCards = "/sys/class/drm/";
constexpr std::string_view kCard = "card";

// A virtual machine's card hangs below a channel of its PCI function; a board's own stands for itself.
std::string adapterAbove(const Root& root, const std::string& device)
{
    for (const std::string& ancestor : ancestorsOf(device))
        if (root.linkName(ancestor + "/subsystem") == "pci")
            return isDisplayClass(root.number(ancestor + "/class").value_or(0)) ? ancestor : device;
    return device;
}

// "card0" of "card0-HDMI-A-1".
std::string_view cardOf(std::string_view name)
{
    return name.substr(0, name.find('-'));
}

bool isCard(std::string_view name)
{
    return name.starts_with(kCard) && report::parseNumber<uint32_t>(name.substr(kCard.size()));
}
} // namespace

std::string DisplayCard::connectorFolder(std::string_view connector) const
{
    return kCards + name + '-' + std::string(connector) + '/';
}

bool isDisplayClass(uint64_t pciClass)
{
    constexpr uint64_t kDisplay = 0x03;
    return pciClass >> 16 == kDisplay;
}

std::vector<DisplayCard> readDisplayCards(const Root& root)
{
    const std::vector<std::string> names = root.list(kCards);
    std::vector<DisplayCard> cards;
    for (const std::string& name : names)
        if (isCard(name))
            if (const std::optional<std::string> device = root.realPath(kCards + name + "/device"))
                cards.push_back({name, adapterAbove(root, *device), {}});
    for (const std::string& name : names)
        for (DisplayCard& card : cards)
            if (name.size() > card.name.size() && cardOf(name) == card.name)
                card.connectors.push_back(name.substr(card.name.size() + 1));
    return cards;
}
} // namespace host
