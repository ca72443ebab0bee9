// Pointing Device: a row a mouse, track point, touch pad, touch screen or pen.

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "host/input/InputDevices.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kResolution = "/sys/module/psmouse/parameters/resolution";

uint64_t buttonsOf(const InputDevice& device)
{
    constexpr size_t kFirst = 0x110, kLast = 0x117; // BTN_LEFT to BTN_TASK
    uint64_t count = 0;
    for (size_t code = kFirst; code <= kLast; ++code)
        count += device.keys[code] ? 1 : 0;
    return count;
}

// What the driver of such mice is told to ask of them; pads say themselves how fine they are.
bool hasResolution(const InputDevice& device, uint32_t type)
{
    constexpr uint64_t kPs2 = 0x11;
    constexpr uint32_t kMouse = 3, kTrackPoint = 5;
    return device.bus == kPs2 && (type == kMouse || type == kTrackPoint);
}

RowBuilder pointerRow(const Root& root, const InputDevice& device, uint32_t type)
{
    RowBuilder row(GROUP_POINTING_DEVICE);
    row.text(POINTING_DEVICE_ID, md5(device.name + '\n' + device.physicalPath), "");
    row.number(POINTING_DEVICE_TYPE, type, device.source);
    row.number(POINTING_DEVICE_NUMBER_OF_BUTTONS, buttonsOf(device), device.source);
    row.text(POINTING_DEVICE_MODEL, device.name, device.source);
    row.text(POINTING_DEVICE_NAME, device.name, device.source);
    row.text(POINTING_DEVICE_PHYSICAL_PATH, device.physicalPath, device.source);
    row.text(POINTING_DEVICE_BUS, device.busName(), device.source);
    if (hasResolution(device, type))
        row.number(POINTING_DEVICE_SENSITIVITY, root.number(kResolution), kResolution);
    return row;
}
} // namespace

void collectPointingDevice(const Machine& machine, Collection& collection)
{
    uint64_t index = 0;
    for (const InputDevice& device : readInputDevices(machine)) {
        const std::optional<uint32_t> type = device.pointerType();
        if (!type)
            continue;
        RowBuilder row = pointerRow(machine.root, device, *type);
        row.number(POINTING_DEVICE_INDEX, ++index, device.source);
        collection.add(std::move(row));
    }
}
} // namespace host
