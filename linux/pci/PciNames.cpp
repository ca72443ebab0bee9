#include "linux/pci/PciNames.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "com/Owned.h"
#include "com/VexDebug.h"
#include "linux/pci/PciTables.h"
#include "linux/text/TextParse.h"

namespace
{

constexpr size_t kNameSize = 180;

bool isEmpty(const char* text)
{
    return *text == '\0';
}

// A name that is longer than the report's is cut.
__attribute__((format(printf, 2, 3))) void setName(char* name, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(name, kNameSize, format, arguments);
    va_end(arguments);
}

// The name by the device's own record; name stays empty when the record has no text at all.
void nameByRecord(char* name, const char* vendorName, const PciDevice& device)
{
    if (!isEmpty(device.chipName) && !isEmpty(device.description))
        setName(name, "%s %s (%s)", vendorName, device.chipName, device.description);
    else if (!isEmpty(device.chipName))
        setName(name, "%s %s", vendorName, device.chipName);
    else if (!isEmpty(device.description))
        setName(name, "%s %s", vendorName, device.description);
}

// The name of a device that has no record of its own.
void nameByClass(char* name, const char* vendorName, const char* classText)
{
    if (isEmpty(classText))
        setName(name, "%s device", vendorName);
    else
        setName(name, "%s (%s)", vendorName, classText);
}

} // namespace

char* lookupPCI(unsigned long vendorId, unsigned long deviceId, const char* classText)
{
    const auto vendorNumber = static_cast<uint32_t>(vendorId);
    const auto deviceNumber = static_cast<uint32_t>(deviceId);
    VEX_LOG(DEBUG_PCI_DEVICE, VEX_LEVEL_DETAIL, "\n.. looking up vendor 0x%x device 0x%x", vendorNumber, deviceNumber);
    auto* const name = static_cast<char*>(calloc(kNameSize, 1));
    if (name == nullptr)
        return nullptr;
    const PciVendor* const vendor = findPciVendor(vendorNumber);
    if (vendor == nullptr) {
        if (!isEmpty(classText))
            setName(name, "(%s)", classText);
        return name;
    }
    const char* const vendorName = isEmpty(vendor->shortName) ? vendor->fullName : vendor->shortName;
    const PciDevice* const device = findPciDevice(vendorNumber, deviceNumber);
    if (device != nullptr)
        nameByRecord(name, vendorName, *device);
    if (isEmpty(name))
        nameByClass(name, vendorName, classText);
    return name;
}

void processSuSEline(const char* line, char* out, size_t size)
{
    static constexpr char kMark[] = "PCI device ";
    if (size == 0)
        return;
    memset(out, 0, size);
    const char* ids = strstr(line, kMark);
    if (ids == nullptr)
        return;
    ids += strlen(kMark);
    uint32_t vendorId = 0;
    uint32_t deviceId = 0;
    if (!readULong(&ids, &vendorId, 16) || *ids++ != ':' || !readULong(&ids, &deviceId, 16))
        return;
    const OwnedText name(lookupPCI(vendorId, deviceId, ""));
    if (name != nullptr)
        snprintf(out, size, "%s", name.get());
}
