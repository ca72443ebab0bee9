#include "host/input/InputDevices.h"

#include <algorithm>

#include "host/Kernel.h"
#include "host/Root.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr const char* kDevices = "/proc/bus/input/devices";
constexpr const char* kClass = "/sys/class/input/";

// Numbers of linux/input.h.
struct Bus {
    uint64_t number;
    const char* name;
};
constexpr Bus kBuses[] = {
    {0x01, "PCI"},   {0x02, "ISA PnP"}, {0x03, "USB"}, {0x04, "HIL"},    {0x05, "Bluetooth"}, {0x06, "Virtual"},
    {0x10, "ISA"},   {0x11, "PS/2"},    {0x12, "XT"},  {0x13, "RS-232"}, {0x14, "Gameport"},  {0x15, "Parallel"},
    {0x16, "Amiga"}, {0x17, "ADB"},     {0x18, "I2C"}, {0x19, "Host"},   {0x1A, "GSC"},       {0x1B, "Atari"},
    {0x1C, "SPI"},   {0x1D, "RMI"},     {0x1E, "CEC"}, {0x1F, "ISHTP"},  {0x20, "AMD SFH"},
};

// Codes of linux/input-event-codes.h.
enum : size_t {
    KIND_KEY = 0x01,
    KIND_REPEAT = 0x14,
    KEY_Q = 16,
    KEY_P = 25,
    KEY_A = 30,
    KEY_L = 38,
    KEY_Z = 44,
    KEY_M = 50,
    BUTTON_LEFT = 0x110,
    BUTTON_TOOL_PEN = 0x140,
    BUTTON_TOOL_FINGER = 0x145,
    BUTTON_TOUCH = 0x14A,
    BUTTON_STYLUS = 0x14B,
    AXIS_X = 0x00,
    AXIS_Y = 0x01,
    AXIS_TOUCH_X = 0x35,
    AXIS_TOUCH_Y = 0x36,
    PROPERTY_DIRECT = 0x01,
    PROPERTY_POINTING_STICK = 0x05,
    PROPERTY_ACCELEROMETER = 0x06,
};

// Codes of Pointing Device's Type.
constexpr uint32_t kOther = 1, kMouse = 3, kTrackPoint = 5, kTouchPad = 7, kTouchScreen = 8;

bool hasAll(const InputBits& bits, size_t first, size_t last)
{
    for (size_t code = first; code <= last; ++code)
        if (!bits[code])
            return false;
    return true;
}

// The words of a bit set, the highest first and none filled up with zeros.
InputBits parseBits(std::string_view text, size_t wordBits)
{
    InputBits bits;
    std::vector<std::string_view> words = report::words(text);
    std::reverse(words.begin(), words.end());
    for (size_t i = 0; i < words.size() && i * wordBits < bits.size(); ++i) {
        const uint64_t word = report::parseNumber(words[i], 16).value_or(0);
        for (size_t bit = 0; bit < wordBits && i * wordBits + bit < bits.size(); ++bit)
            bits[i * wordBits + bit] = (word >> bit & 1) != 0;
    }
    return bits;
}

// The set of an input device that a file of /sys and a line of /proc name so.
InputBits* bitsNamed(InputDevice& device, std::string_view name)
{
    if (name == "PROP")
        return &device.properties;
    if (name == "EV")
        return &device.kinds;
    if (name == "KEY")
        return &device.keys;
    if (name == "REL")
        return &device.relative;
    return name == "ABS" ? &device.absolute : nullptr;
}

// "Bus=0011 Vendor=0001 Product=0001 Version=ab41"
void takeIds(InputDevice& device, std::string_view text)
{
    for (const std::string_view word : report::words(text)) {
        const auto [key, value] = report::keyValue(word, '=');
        const std::optional<uint64_t> number = report::parseNumber<uint16_t>(value, 16);
        if (key == "Bus")
            device.bus = number;
        else if (key == "Vendor")
            device.vendor = number;
        else if (key == "Product")
            device.product = number;
    }
}

// "event4" among the names of what handles a device.
std::string eventsAmong(const std::vector<std::string_view>& names)
{
    constexpr std::string_view kPrefix = "event";
    for (const std::string_view name : names)
        if (name.starts_with(kPrefix) && report::parseNumber<uint16_t>(name.substr(kPrefix.size())))
            return std::string(name);
    return "";
}

// A name stands in quotes and may have some of its own.
std::string unquoted(std::string_view text)
{
    const bool isQuoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return std::string(report::trimmed(isQuoted ? text.substr(1, text.size() - 2) : text));
}

void takeField(InputDevice& device, char kind, std::string_view text, size_t wordBits)
{
    const auto [key, value] = report::keyValue(text, '=');
    if (kind == 'I')
        takeIds(device, text);
    else if (kind == 'N' && key == "Name")
        device.name = unquoted(value);
    else if (kind == 'P' && key == "Phys")
        device.physicalPath = value;
    else if (kind == 'S' && key == "Sysfs")
        device.folder = value;
    else if (kind == 'H' && key == "Handlers")
        device.events = eventsAmong(report::words(value));
    else if (InputBits* bits = kind == 'B' ? bitsNamed(device, key) : nullptr)
        *bits = parseBits(value, wordBits);
}

// The lines of a set of bits in the form that the kernel has for all devices together.
std::string linesOf(const Root& root, const std::string& folder)
{
    constexpr const char* kSets[][2] = {{"PROP", "properties"},
                                        {"EV", "capabilities/ev"},
                                        {"KEY", "capabilities/key"},
                                        {"REL", "capabilities/rel"},
                                        {"ABS", "capabilities/abs"}};
    const auto line = [&](const char* name) { return root.line(folder + name).value_or(""); };
    std::string text =
        "I: Bus=" + line("id/bustype") + " Vendor=" + line("id/vendor") + " Product=" + line("id/product");
    text += "\nN: Name=\"" + line("name") + "\"\nP: Phys=" + line("phys");
    constexpr std::string_view kTop = "/sys";
    if (const std::optional<std::string> path = root.realPath(folder); path && path->starts_with(kTop))
        text += "\nS: Sysfs=" + path->substr(kTop.size());
    text += "\nH: Handlers=";
    for (const std::string& name : root.list(folder))
        text += name + ' ';
    for (const auto& [key, file] : kSets)
        text.append("\nB: ").append(key).append("=").append(line(file));
    return text + "\n\n";
}
} // namespace

std::string InputDevice::busName() const
{
    for (const Bus& known : kBuses)
        if (known.number == bus)
            return known.name;
    char text[16] = "";
    if (bus)
        snprintf(text, sizeof text, "0x%02llx", static_cast<unsigned long long>(*bus));
    return text;
}

bool InputDevice::repeats() const
{
    return kinds[KIND_REPEAT];
}

bool InputDevice::isKeyboard() const
{
    return kinds[KIND_KEY] && hasAll(keys, KEY_Q, KEY_P) && hasAll(keys, KEY_A, KEY_L) && hasAll(keys, KEY_Z, KEY_M);
}

std::optional<uint32_t> InputDevice::pointerType() const
{
    const bool isMoved = relative[AXIS_X] && relative[AXIS_Y] && keys[BUTTON_LEFT];
    if (isMoved)
        return properties[PROPERTY_POINTING_STICK] ? kTrackPoint : kMouse;
    const bool hasPlace = (absolute[AXIS_X] && absolute[AXIS_Y]) || (absolute[AXIS_TOUCH_X] && absolute[AXIS_TOUCH_Y]);
    if (!hasPlace || properties[PROPERTY_ACCELEROMETER])
        return std::nullopt;
    if (keys[BUTTON_TOOL_PEN] || keys[BUTTON_STYLUS])
        return kOther;
    if (properties[PROPERTY_DIRECT])
        return kTouchScreen;
    if (keys[BUTTON_TOOL_FINGER])
        return kTouchPad;
    if (keys[BUTTON_TOUCH])
        return kTouchScreen;
    return keys[BUTTON_LEFT] ? std::optional(kMouse) : std::nullopt; // of a virtual machine: where the host's is
}

std::vector<InputDevice> parseInputDevices(std::string_view text, size_t wordBits)
{
    std::vector<InputDevice> devices;
    bool isOpen = false;
    std::string_view line;
    while (report::takeLine(text, line)) {
        if (line.size() < 3 || line[1] != ':') {
            isOpen = false; // an empty line ends a device
            continue;
        }
        if (!isOpen)
            devices.emplace_back();
        isOpen = true;
        takeField(devices.back(), line[0], report::trimmed(line.substr(2)), wordBits);
    }
    return devices;
}

size_t inputWordBits(std::string_view text, std::string_view machine)
{
    constexpr size_t kDigitsOf32 = 8;
    std::string_view line;
    while (report::takeLine(text, line)) {
        if (!line.starts_with("B: "))
            continue;
        for (const std::string_view word : report::words(report::keyValue(line, '=').value))
            if (word.size() > kDigitsOf32)
                return 64;
    }
    return machine.find("64") != std::string_view::npos || machine == "s390x" || machine == "alpha" ? 64 : 32;
}

std::vector<InputDevice> readInputDevices(const Machine& machine)
{
    std::string text = machine.root.read(kDevices).value_or("");
    const char* source = kDevices;
    if (text.empty()) {
        source = kClass;
        for (const std::string& name : machine.root.list(kClass))
            if (name.starts_with("input"))
                text += linesOf(machine.root, kClass + name + '/');
    }
    std::vector<InputDevice> devices = parseInputDevices(text, inputWordBits(text, machine.kernel.names().machine));
    std::erase_if(devices, [](const InputDevice& device) { return device.isMadeByProgram(); });
    for (InputDevice& device : devices)
        device.source = source;
    return devices;
}
} // namespace host
