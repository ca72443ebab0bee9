#include "linux/network/ResolvConf.h"

#include <cstdio>
#include <cstring>

#include "com/VexDebug.h"
#include "linux/text/TextStream.h"

namespace
{

constexpr char kBlanks[] = " \t\n";

// Returns the number of name servers that are known after this one. The length drops IPv6 addresses.
int takeNameServer(const char* address, int known, ResolvConf* settings)
{
    if (address == nullptr || strlen(address) >= sizeof settings->nameServer1)
        return known;
    if (known == 0) {
        snprintf(settings->nameServer1, sizeof settings->nameServer1, "%s", address);
        VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nnameserver1=>%s<", settings->nameServer1);
    } else {
        snprintf(settings->nameServer2, sizeof settings->nameServer2, "%s", address);
        VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nnameserver2=>%s<", settings->nameServer2);
    }
    return known + 1;
}

void takeDomain(const char* domain, ResolvConf* settings)
{
    if (domain == nullptr) {
        VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\n/etc/resolv.conf domain name null");
        return;
    }
    snprintf(settings->domain, sizeof settings->domain, "%s", domain);
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nusing domainName from /etc/resolv.conf: [%s]", settings->domain);
}

} // namespace

void readResolvConf(TextStream& stream, ResolvConf* settings)
{
    int nameServers = 0;
    char line[255];
    while (nameServers < 2 && stream.readLine(line)) {
        char* rest = nullptr;
        const char* const keyword = strtok_r(line, kBlanks, &rest);
        if (keyword == nullptr)
            continue;
        if (strcmp(keyword, "nameserver") == 0)
            nameServers = takeNameServer(strtok_r(nullptr, kBlanks, &rest), nameServers, settings);
        else if (strcmp(keyword, "domain") == 0 && settings->domain[0] == '\0')
            takeDomain(strtok_r(nullptr, " \t\n#", &rest), settings);
    }
}
