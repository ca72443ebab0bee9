#include "linux/IpAddressGroup.h"

#include <cstdio>
#include <cstring>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/Gateway.h"
#include "linux/InterfaceList.h"
#include "linux/ResolvConf.h"
#include "linux/TextStream.h"

static constexpr size_t kListBufferSize = 2000;
static constexpr char kLoopback[] = "127.0.0.1";

IpAddressGroup::IpAddressGroup() : VexGroup(GROUP_IP_ADDRESS, 1) {}

// What is known of one interface; unanswered questions leave empty texts.
struct InterfaceFacts {
    char address[INET_ADDRSTRLEN] = "";
    char netmask[INET_ADDRSTRLEN] = "";
    char hostName[256] = "";
    MacText mac = "";
    ResolvConf resolver; // its domain is the reverse look-up's, if that gave one
};

// The IPv4 address that the kernel has written into answer.
static in_addr addressOf(const ifreq& answer)
{
    sockaddr_in address;
    static_assert(sizeof address == sizeof answer.ifr_addr);
    memcpy(&address, &answer.ifr_addr, sizeof address);
    return address.sin_addr;
}

void splitHostName(const char* name, char (&hostName)[256], char (&domain)[256])
{
    char official[256];
    snprintf(official, sizeof official, "%s", name);
    char* const dot = strchr(official, '.');
    if (dot != nullptr) {
        *dot = '\0';
        snprintf(domain, sizeof domain, "%s", dot + 1);
    }
    snprintf(hostName, sizeof hostName, "%s", official);
}

static void readMac(const InterfaceSocket& socket, ifreq* request, MacText& mac)
{
    if (!socket.ask(SIOCGIFHWADDR, request)) {
        VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nMAC addr Failed");
        return;
    }
    formatMac(*request, mac);
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nMAC addr=%s", mac);
}

static void lookUpHostName(in_addr address, InterfaceFacts* facts)
{
    const hostent* const host = gethostbyaddr(&address, sizeof address, AF_INET);
    if (host != nullptr && host->h_name != nullptr)
        splitHostName(host->h_name, facts->hostName, facts->resolver.domain);
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nhostname=>%s< domain=>%s<", facts->hostName, facts->resolver.domain);
}

// Asks for everything that hangs on the interface's address.
static void readAddress(const InterfaceSocket& socket, ifreq* request, InterfaceFacts* facts)
{
    if (!socket.ask(SIOCGIFADDR, request))
        return;
    const in_addr address = addressOf(*request);
    snprintf(facts->address, sizeof facts->address, "%s", inet_ntoa(address));
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nip addr=%s", facts->address);
    readMac(socket, request, facts->mac);
    if (strcmp(facts->address, kLoopback) != 0)
        lookUpHostName(address, facts);
}

static void readNetmask(const InterfaceSocket& socket, ifreq* request, InterfaceFacts* facts)
{
    if (!socket.ask(SIOCGIFNETMASK, request))
        return;
    snprintf(facts->netmask, sizeof facts->netmask, "%s", inet_ntoa(addressOf(*request)));
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nsubnet=%s", facts->netmask);
}

static InterfaceFacts readInterface(const InterfaceSocket& socket, const ifreq& entry)
{
    InterfaceFacts facts;
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nifr_name=%s", entry.ifr_name);
    ifreq request = requestFor(entry);
    readAddress(socket, &request, &facts);
    readNetmask(socket, &request, &facts);
    TextStream resolvConf = TextStream::openFile("/etc/resolv.conf");
    readResolvConf(resolvConf, &facts.resolver);
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\ndone parsing resolv.conf...");
    return facts;
}

static void addUnlessEmpty(VexTableRow* row, unsigned long id, const char* text)
{
    if (*text != '\0')
        row->addString(id, text);
}

static void addInterface(VexTable* table, uint32_t index, const InterfaceFacts& facts)
{
    char gateway[255] = "";
    getDefaultGateway(gateway, sizeof gateway);
    auto* row = new VexTableRow;
    row->addULong(IP_ADDR_INDEX, index);
    row->addString(IP_ADDR_ADDRESS, facts.address);
    row->addString(IP_ADDR_HOSTNAME, facts.hostName);
    row->addString(IP_ADDR_DOMAIN, facts.resolver.domain);
    row->addString(IP_ADDR_SUBNET, facts.netmask);
    if (gateway[0] != '\0')
        VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\ndefault gateway=>%s<", gateway);
    addUnlessEmpty(row, IP_ADDR_GATEWAY, gateway);
    addUnlessEmpty(row, IP_ADDR_PRIMARY_DNS, facts.resolver.nameServer1);
    addUnlessEmpty(row, IP_ADDR_SECONDARY_DNS, facts.resolver.nameServer2);
    row->addString(IP_ADDR_PERMANENT_MAC, facts.mac);
    table->addRow(row);
}

VexTable* IpAddressGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_IP_ADDRESS, "IpAddress");
    auto* table = new VexTable(getGroupId(), getGroupVersion());
    const InterfaceSocket socket(SOCK_DGRAM);
    if (!socket.isOpen())
        return table;
    uint32_t count = 0;
    for (const ifreq& entry : socket.list(kListBufferSize)) {
        const InterfaceFacts facts = readInterface(socket, entry);
        if (facts.address[0] != '\0' && strcmp(facts.address, kLoopback) != 0 && facts.netmask[0] != '\0')
            addInterface(table, ++count, facts);
    }
    return table;
}
