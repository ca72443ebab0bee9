// What the driver of a network link tells (linux/ethtool.h).

#include <cstring>
#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <optional>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <vector>

#include <nlohmann/json.hpp>

#include "host/Descriptor.h"
#include "host/kernel/Questions.h"

namespace host
{
static bool askDriver(int socket, const std::string& link, void* command)
{
    ifreq request{};
    if (link.size() >= sizeof request.ifr_name)
        return false;
    memcpy(request.ifr_name, link.c_str(), link.size());
    request.ifr_data = static_cast<char*>(command);
    return ioctl(socket, SIOCETHTOOL, &request) == 0;
}

// The text of a field that need not end; what drivers write for "nothing" is nothing.
template <size_t N>
static void addText(nlohmann::json& object, const char* name, const char (&field)[N])
{
    const std::string text(field, strnlen(field, N));
    if (!text.empty() && text != "N/A")
        object[name] = text;
}

// The masks behind the settings have a length that the kernel tells first, as a negative number of words.
static std::optional<uint8_t> askPort(int socket, const std::string& link)
{
    constexpr size_t kMostWords = size_t{3} * INT8_MAX;
    std::vector<ethtool_link_settings> request(2 + kMostWords * sizeof(uint32_t) / sizeof(ethtool_link_settings));
    ethtool_link_settings& settings = request.front();
    settings.cmd = ETHTOOL_GLINKSETTINGS;
    if (!askDriver(socket, link, &settings) || settings.link_mode_masks_nwords >= 0 ||
        settings.link_mode_masks_nwords == INT8_MIN)
        return std::nullopt;
    const auto words = static_cast<int8_t>(-settings.link_mode_masks_nwords);
    settings = {};
    settings.cmd = ETHTOOL_GLINKSETTINGS;
    settings.link_mode_masks_nwords = words;
    if (!askDriver(socket, link, &settings) || settings.link_mode_masks_nwords != words)
        return std::nullopt;
    return settings.port;
}

nlohmann::json askLinkDriver(const std::string& link)
{
    // Any socket asks: one that needs no network.
    const Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ethtool_drvinfo driver{};
    driver.cmd = ETHTOOL_GDRVINFO;
    nlohmann::json answer;
    if (askDriver(socket.get(), link, &driver)) {
        addText(answer, "driver", driver.driver);
        addText(answer, "firmwareVersion", driver.fw_version);
        addText(answer, "busAddress", driver.bus_info);
    }
    if (const std::optional<uint8_t> port = askPort(socket.get(), link))
        answer["port"] = *port;
    return answer;
}
} // namespace host
