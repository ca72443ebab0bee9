#include "linux/network/InterfaceList.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "com/VexDebug.h"

namespace
{

// A record of the list on a 32-bit platform. List sizes are given and logged in these, whatever the build's record is.
constexpr int kRecordSize32 = 32;

} // namespace

InterfaceSocket::InterfaceSocket(int type) : descriptor_(socket(AF_INET, type, 0)) {}

InterfaceSocket::~InterfaceSocket()
{
    if (isOpen())
        close(descriptor_);
}

std::vector<ifreq> InterfaceSocket::list(size_t bufferSize) const
{
    std::vector<ifreq> entries(bufferSize / kRecordSize32);
    const auto capacity = static_cast<int>(entries.size() * sizeof(ifreq));
    ifconf request = {};
    request.ifc_len = capacity;
    request.ifc_req = entries.data();
    if (ioctl(descriptor_, SIOCGIFCONF, &request) < 0)
        return {};
    const int count = std::clamp(request.ifc_len, 0, capacity) / static_cast<int>(sizeof(ifreq));
    // The adapters' category for both groups that list interfaces.
    VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\nifc_len=%d count =%d", count * kRecordSize32, count);
    entries.resize(static_cast<size_t>(count));
    for (ifreq& entry : entries)
        entry.ifr_name[IFNAMSIZ - 1] = '\0';
    return entries;
}

bool InterfaceSocket::ask(unsigned long code, ifreq* request) const
{
    return ioctl(descriptor_, code, request) >= 0;
}

ifreq requestFor(const ifreq& entry)
{
    ifreq request = {};
    memcpy(request.ifr_name, entry.ifr_name, sizeof request.ifr_name);
    return request;
}

void formatMac(const ifreq& answer, MacText& text)
{
    unsigned char bytes[6];
    memcpy(bytes, answer.ifr_hwaddr.sa_data, sizeof bytes);
    snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", bytes[0], bytes[1], bytes[2], bytes[3], bytes[4],
             bytes[5]);
}

bool readMac(const InterfaceSocket& socket, const ifreq& entry, uint32_t category, const char* failed, MacText& text)
{
    ifreq request = requestFor(entry);
    if (!socket.ask(SIOCGIFHWADDR, &request)) {
        VEX_LOG(category, VEX_LEVEL_DETAIL, "%s", failed);
        return false;
    }
    formatMac(request, text);
    VEX_LOG(category, VEX_LEVEL_DETAIL, "\nMAC addr=%s", text);
    return true;
}
