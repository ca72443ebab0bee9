#include "linux/network/Gateway.h"

#include <cstdio>
#include <cstring>

#include "com/VexDebug.h"
#include "linux/text/TextStream.h"

namespace
{

constexpr size_t kLineSize = 255;
constexpr int kMaxLines = 299;

struct GatewaySource {
    const char* logText;
    const char* path;
    const char* key;
};

// In order of precedence. The first key stands without "=", so that GATEWAYDEV matches it as well: kept as it always
// was.
constexpr GatewaySource kGatewaySources[] = {
    {.logText = "\nlooking for default gateway... caldera",
     .path = "/etc/sysconfig/network-scripts/ifcfg-eth0",
     .key = "GATEWAY"},
    {.logText = " suse", .path = "/etc/route.conf", .key = "default"},
    {.logText = " suse8", .path = "/etc/sysconfig/network/routes", .key = "default"},
    {.logText = " redhat", .path = "/etc/sysconfig/network", .key = "GATEWAY="},
};

} // namespace

int getGateway(char* out, char* line, const char* key)
{
    const char* const found = strstr(line, key);
    if (found == nullptr)
        return 0;
    const char* const comment = strchr(line, '#');
    if (comment != nullptr && comment <= found)
        return 0;
    const char* address = found + strlen(key);
    address += strcspn(address, "0123456789");
    if (*address == '\0')
        return 0;
    const size_t length = strspn(address, "0123456789,'.");
    memcpy(out, address, length);
    out[length] = '\0';
    return 1;
}

bool readGateway(TextStream& stream, const char* key, char* out, unsigned long size)
{
    char line[kLineSize];
    char gateway[kLineSize];
    for (int count = 0; count < kMaxLines && stream.readLine(line); ++count) {
        if (getGateway(gateway, line, key) != 0) {
            snprintf(out, size, "%s", gateway);
            return true;
        }
    }
    return false;
}

void getDefaultGateway(char* out, unsigned long size)
{
    for (const GatewaySource& source : kGatewaySources) {
        VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "%s", source.logText);
        TextStream stream = TextStream::openFile(source.path);
        if (readGateway(stream, source.key, out, size))
            return;
    }
}
