#include "host/kernel/NvmeHealth.h"

#include <cerrno>
#include <fcntl.h>
#include <linux/nvme_ioctl.h>
#include <sys/ioctl.h>

#include <nlohmann/json.hpp>

#include "host/kernel/DeviceNode.h"
#include "host/kernel/Questions.h"

namespace host
{
namespace
{
// Offsets in the log.
enum : size_t {
    WARNING = 0,
    TEMPERATURE = 1, // two bytes, kelvin
    SPARE = 3,       // percent
    USED = 5,        // percent, of more than 254 that
    WRITTEN = 48,    // 16 bytes, thousands of 512 bytes
    HOURS = 128,     // 16 bytes
};

// A little-endian number of 16 bytes.
uint64_t longNumber(const NvmeHealthLog& log, size_t offset)
{
    constexpr size_t kKept = 8, kBytes = 16;
    uint64_t number = 0;
    for (size_t i = kBytes; i > 0; --i) {
        const uint8_t byte = log[offset + i - 1];
        if (i > kKept && byte != 0)
            return UINT64_MAX;
        number = number << 8 | byte;
    }
    return number;
}

// Get Log Page (5.16) of the log for the whole controller. The kernel's own time limit stands: a shorter one would have
// it reset a controller that is slow.
bool readLog(int device, NvmeHealthLog& log)
{
    constexpr uint8_t kGetLogPage = 0x02;
    constexpr uint32_t kWholeController = 0xFFFFFFFF, kHealth = 0x02;
    constexpr uint32_t kWords = sizeof log / sizeof(uint32_t);
    nvme_admin_cmd command{};
    command.opcode = kGetLogPage;
    command.nsid = kWholeController;
    command.addr = reinterpret_cast<uintptr_t>(log.data());
    command.data_len = sizeof log;
    command.cdw10 = (kWords - 1) << 16 | kHealth;
    const int status = ioctl(device, NVME_IOCTL_ADMIN_CMD, &command);
    if (status > 0) // the controller's own
        errno = EIO;
    return status == 0;
}
} // namespace

nlohmann::json parseNvmeHealth(const NvmeHealthLog& log)
{
    return {{"criticalWarning", log[WARNING]},
            {"temperature", log[TEMPERATURE] | log[TEMPERATURE + 1] << 8},
            {"availableSpare", log[SPARE]},
            {"percentageUsed", log[USED]},
            {"dataUnitsWritten", longNumber(log, WRITTEN)},
            {"powerOnHours", longNumber(log, HOURS)}};
}

nlohmann::json askNvmeHealth(const std::string& node)
{
    const Descriptor device = openCharacterDevice(node, O_RDONLY);
    NvmeHealthLog log{};
    if (!device.isOpen() || !readLog(device.get(), log))
        return nullptr;
    return parseNvmeHealth(log);
}
} // namespace host
