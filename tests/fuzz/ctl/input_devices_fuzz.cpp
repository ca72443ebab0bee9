// Any text as /proc/bus/input/devices: no crash, no more devices than lines, and numbers are as small as the kernel's.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "host/input/InputDevices.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto lines = static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    for (const char* machine : {"i686", "x86_64"}) {
        const auto devices = host::parseInputDevices(text, host::inputWordBits(text, machine));
        if (devices.size() > lines)
            abort();
        for (const host::InputDevice& device : devices)
            if (device.bus.value_or(0) > UINT16_MAX || device.events.size() > size || device.busName().size() > 16 ||
                device.pointerType().value_or(1) > 9 || (device.isKeyboard() && device.keys.none()))
                abort();
    }
    return 0;
}
