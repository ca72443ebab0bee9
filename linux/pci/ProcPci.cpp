#include "linux/pci/ProcPci.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "com/Owned.h"
#include "com/VexDebug.h"
#include "linux/pci/PciNames.h"
#include "linux/text/TextParse.h"

namespace
{

bool isUnknown(const char* text)
{
    return contains(text, "Unknown ");
}

// The number of "(rev N)": decimal, octal or hexadecimal by its prefix, 0 when there is none.
int32_t parseRevision(const char* parenthesis)
{
    const long long number = strtoll(parenthesis + strlen("(rev"), nullptr, 0);
    return static_cast<int32_t>(std::clamp<long long>(number, INT32_MIN, INT32_MAX));
}

} // namespace

bool ProcPciParser::takeLine(char* line)
{
    switch (state_) {
    case State::DescriptionLine:
        return takeDescriptionLine(line);
    case State::IdLine:
        return takeIdLine(line);
    case State::BusLine:
        takeBusLine(line);
        break;
    }
    return false;
}

// Reads the revision behind the description, and ends the description before it.
void ProcPciParser::takeRevision(char* description)
{
    int32_t revision = 0;
    char* const parenthesis = strstr(description, "(rev");
    if (parenthesis != nullptr) {
        parenthesis[-1] = '\0'; // the blank before it, at the earliest the one that the description follows
        revision = parseRevision(parenthesis);
    }
    // A number of more than two digits is cut to its first two.
    snprintf(device_.revision, sizeof device_.revision, "0x%02X", static_cast<uint32_t>(revision));
}

// Any line that is no bus line leaves the state as it is.
void ProcPciParser::takeBusLine(const char* line)
{
    const char* const bus = strstr(line, "Bus");
    const char* const device = strstr(line, "device");
    if (bus == nullptr || device == nullptr || !contains(line, "function"))
        return;
    busNumber_ = parseLong(bus + strlen("Bus"));
    deviceNumber_ = parseLong(device + strlen("device"));
    VEX_LOG(DEBUG_PCI_DEVICE, VEX_LEVEL_DETAIL, "\n    |Bus %i Device %i", busNumber_, deviceNumber_);
    state_ = State::DescriptionLine;
}

bool ProcPciParser::takeDescriptionLine(char* line)
{
    VEX_LOG(DEBUG_PCI_DEVICE, VEX_LEVEL_DETAIL, "\n    |%s", line);
    state_ = State::BusLine;
    device_.revision[0] = '\0';
    char* const separator = strstr(line, ": ");
    if (separator == nullptr)
        return false;
    char* const description = separator + strlen(": ");
    takeRevision(description);

    if (contains(line, "PCI device ")) {
        processSuSEline(line, device_.name, sizeof device_.name);
        return finishEntry();
    }
    const char* const classText = line + strspn(line, " ");
    const auto classLength = static_cast<int>(separator - classText);
    const bool descriptionUnknown = isUnknown(description);
    snprintf(device_.name, sizeof device_.name, "%.*s", classLength, classText);
    if (descriptionUnknown) {
        state_ = State::IdLine;
        return false;
    }
    if (isUnknown(device_.name))
        snprintf(device_.name, sizeof device_.name, "%s", description);
    else
        snprintf(device_.name, sizeof device_.name, "%s (%.*s)", description, classLength, classText);
    return finishEntry();
}

bool ProcPciParser::takeIdLine(const char* line)
{
    VEX_LOG(DEBUG_PCI_DEVICE, VEX_LEVEL_DETAIL, "\n    |%s", line);
    if (isUnknown(device_.name))
        device_.name[0] = '\0';
    const char* const vendor = strstr(line, "Vendor id=");
    const char* const device = strstr(line, "Device id=");
    if (vendor == nullptr || device == nullptr) {
        takeBusLine(line);
        return false;
    }
    state_ = State::BusLine;
    const OwnedText name(lookupPCI(parseULong(vendor + strlen("Vendor id="), 16),
                                   parseULong(device + strlen("Device id="), 16), device_.name));
    snprintf(device_.name, sizeof device_.name, "%s", name == nullptr ? "" : name.get());
    return finishEntry();
}

// True when the entry is to be reported; it is then what later functions of the device are compared with.
bool ProcPciParser::finishEntry()
{
    VEX_LOG(DEBUG_PCI_DEVICE, VEX_LEVEL_DETAIL, "\nWrote: >%s< rev: >%s<", device_.name, device_.revision);
    if (busNumber_ == lastBusNumber_ && deviceNumber_ == lastDeviceNumber_ && strcmp(device_.name, lastName_) == 0) {
        VEX_LOG(DEBUG_PCI_DEVICE, VEX_LEVEL_DETAIL, "\n^^^^ skipped because it's a dupe");
        return false;
    }
    if (device_.name[0] == '\0')
        return false;
    memcpy(lastName_, device_.name, sizeof lastName_);
    lastBusNumber_ = busNumber_;
    lastDeviceNumber_ = deviceNumber_;
    return true;
}
