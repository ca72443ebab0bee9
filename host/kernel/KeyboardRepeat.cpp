// How fast a key that is held down repeats (linux/input.h).

#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>

#include <nlohmann/json.hpp>

#include "host/kernel/DeviceNode.h"
#include "host/kernel/Questions.h"

namespace host
{
nlohmann::json askKeyboardRepeat(const std::string& node)
{
    const Descriptor device = openCharacterDevice(node, O_RDONLY);
    unsigned settings[2] = {}; // delay and period in milliseconds
    if (!device.isOpen() || ioctl(device.get(), EVIOCGREP, settings) != 0)
        return nullptr;
    return {{"delay", settings[0]}, {"period", settings[1]}};
}
} // namespace host
