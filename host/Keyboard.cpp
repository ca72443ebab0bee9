// Keyboard: a row a keyboard that types letters.

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/input/InputDevices.h"
#include "host/text/Assignments.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// The machine's layout, which holds for all of its keyboards: of consoles, else of the graphical desktop.
MaybeFact layoutOf(const Root& root)
{
    constexpr const char* kSettings[][2] = {{"/etc/vconsole.conf", "KEYMAP"}, {"/etc/default/keyboard", "XKBLAYOUT"}};
    for (const auto& [path, name] : kSettings) {
        const auto values = parseAssignments(root.read(path, Root::kLineLimit).value_or(""));
        if (const auto found = values.find(name); found != values.end() && !found->second.empty())
            return Fact{found->second, path};
    }
    return std::nullopt;
}

// "0011:0001:0001"
std::string idsOf(const InputDevice& device)
{
    char text[32] = "";
    if (device.bus && device.vendor && device.product)
        snprintf(text, sizeof text, "%04x:%04x:%04x", static_cast<unsigned>(*device.bus),
                 static_cast<unsigned>(*device.vendor), static_cast<unsigned>(*device.product));
    return text;
}

uint64_t functionKeysOf(const InputDevice& device)
{
    constexpr size_t kRanges[][2] = {{59, 68}, {87, 88}, {183, 194}}; // F1 to F10, F11 and F12, F13 to F24
    uint64_t count = 0;
    for (const auto& [first, last] : kRanges)
        for (size_t code = first; code <= last; ++code)
            count += device.keys[code] ? 1 : 0;
    return count;
}

void addRepeat(const Machine& machine, const InputDevice& device, RowBuilder& row)
{
    constexpr uint32_t kSecond = 1000; // ms
    if (!device.repeats() || device.events.empty())
        return;
    const std::string node = "/dev/input/" + device.events;
    const std::optional<KeyboardRepeat> repeat = machine.kernel.keyboardRepeat(node);
    if (!repeat)
        return;
    row.number(KEYBOARD_REPEAT_DELAY, repeat->delay, "EVIOCGREP " + node);
    if (repeat->period != 0)
        row.number(KEYBOARD_CHARACTERS_PER_SECOND, (kSecond + repeat->period / 2) / repeat->period,
                   "EVIOCGREP " + node);
}

RowBuilder keyboardRow(const InputDevice& device, const MaybeFact& layout)
{
    RowBuilder row(GROUP_KEYBOARD);
    row.text(KEYBOARD_TYPE, device.name, device.source);
    row.text(KEYBOARD_NAME, device.name, device.source);
    row.text(KEYBOARD_PHYSICAL_PATH, device.physicalPath, device.source);
    row.text(KEYBOARD_BUS, device.busName(), device.source);
    row.text(KEYBOARD_SUB_TYPE, idsOf(device), device.source);
    row.number(KEYBOARD_NUMBER_OF_FUNCTION_KEYS, functionKeysOf(device), device.source);
    row.text(KEYBOARD_CODE_PAGE, layout);
    return row;
}
} // namespace

void collectKeyboard(const Machine& machine, Collection& collection)
{
    const MaybeFact layout = layoutOf(machine.root);
    for (const InputDevice& device : readInputDevices(machine)) {
        if (!device.isKeyboard())
            continue;
        RowBuilder row = keyboardRow(device, layout);
        addRepeat(machine, device, row);
        collection.add(std::move(row));
    }
}
} // namespace host
