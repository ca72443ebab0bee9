#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host
{
class Root;

/// A card of the kernel's display layer (DRM).
struct DisplayCard {
    std::string name;                    // "card0"
    std::string device;                  // real path of what it drives: a PCI function where there is one
    std::vector<std::string> connectors; // "HDMI-A-1"

    /// The device's name, by which it is known on its bus: "0000:00:02.0".
    std::string address() const { return device.substr(device.rfind('/') + 1); }
    /// The folder of a connector, with a slash at its end.
    std::string connectorFolder(std::string_view connector) const;
};

/// True of a PCI function that shows pictures, by its class.
bool isDisplayClass(uint64_t pciClass);

/// All cards, in natural order.
std::vector<DisplayCard> readDisplayCards(const Root& root);
} // namespace host
