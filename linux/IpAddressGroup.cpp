// Sources: the kernel for interfaces, addresses, netmasks and hardware addresses; a reverse look-up for the host
// name, which may ask the network and says what a name server believes; /etc/resolv.conf; the distributions' network
// configuration for the gateway, which is the one that was configured, not the one in use.

#include "linux/IpAddressGroup.h"

#include <cstdio>
#include <cstring>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/network/Gateway.h"
#include "linux/network/InterfaceList.h"
#include "linux/network/ResolvConf.h"
#include "linux/network/ReverseLookups.h"
#include "linux/text/TextStream.h"

namespace
{

constexpr size_t kListBufferSize = 2000;
constexpr char kLoopback[] = "127.0.0.1";

// What is known of one interface; unanswered questions leave empty texts.
struct InterfaceFacts {
    char address[INET_ADDRSTRLEN] = "";
    char netmask[INET_ADDRSTRLEN] = "";
    char hostName[256] = "";
    MacText mac = "";
    ResolvConf resolver; // its domain is the reverse look-up's, if that gave one
};

// The IPv4 address that the kernel has written into answer.
in_addr addressOf(const ifreq& answer)
{
    sockaddr_in address;
    static_assert(sizeof address == sizeof answer.ifr_addr);
    memcpy(&address, &answer.ifr_addr, sizeof address);
    return address.sin_addr;
}

void lookUpHostName(ReverseLookups* lookups, in_addr address, InterfaceFacts* facts)
{
    if (const char* const name = lookups->nameOf(address))
        splitHostName(name, facts->hostName, facts->resolver.domain);
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nhostname=>%s< domain=>%s<", facts->hostName, facts->resolver.domain);
}

// Asks for everything that hangs on the interface's address.
void readAddress(const InterfaceSocket& socket, ReverseLookups* lookups, const ifreq& entry, InterfaceFacts* facts)
{
    ifreq request = requestFor(entry);
    if (!socket.ask(SIOCGIFADDR, &request))
        return;
    const in_addr address = addressOf(request);
    snprintf(facts->address, sizeof facts->address, "%s", inet_ntoa(address));
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nip addr=%s", facts->address);
    readMac(socket, entry, DEBUG_IP_ADDRESS, "\nMAC addr Failed", facts->mac);
    if (strcmp(facts->address, kLoopback) != 0)
        lookUpHostName(lookups, address, facts);
}

void readNetmask(const InterfaceSocket& socket, const ifreq& entry, InterfaceFacts* facts)
{
    ifreq request = requestFor(entry);
    if (!socket.ask(SIOCGIFNETMASK, &request))
        return;
    snprintf(facts->netmask, sizeof facts->netmask, "%s", inet_ntoa(addressOf(request)));
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nsubnet=%s", facts->netmask);
}

InterfaceFacts readInterface(const InterfaceSocket& socket, ReverseLookups* lookups, const ifreq& entry)
{
    InterfaceFacts facts;
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\nifr_name=%s", entry.ifr_name);
    readAddress(socket, lookups, entry, &facts);
    readNetmask(socket, entry, &facts);
    TextStream resolvConf = TextStream::openFile("/etc/resolv.conf");
    readResolvConf(resolvConf, &facts.resolver);
    VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\ndone parsing resolv.conf...");
    return facts;
}

void addUnlessEmpty(VexTableRow* row, unsigned long id, const char* text)
{
    if (*text != '\0')
        row->addString(id, text);
}

void addInterface(VexTable* table, uint32_t index, const InterfaceFacts& facts)
{
    char gateway[255] = "";
    getDefaultGateway(gateway, sizeof gateway);
    auto* const row = new VexTableRow;
    row->addULong(IP_ADDRESS_INDEX, index);
    row->addString(IP_ADDRESS_ADDRESS, facts.address);
    row->addString(IP_ADDRESS_HOSTNAME, facts.hostName);
    row->addString(IP_ADDRESS_DOMAIN, facts.resolver.domain);
    row->addString(IP_ADDRESS_SUBNET, facts.netmask);
    if (gateway[0] != '\0')
        VEX_LOG(DEBUG_IP_ADDRESS, VEX_LEVEL_DETAIL, "\ndefault gateway=>%s<", gateway);
    addUnlessEmpty(row, IP_ADDRESS_GATEWAY, gateway);
    addUnlessEmpty(row, IP_ADDRESS_PRIMARY_DNS, facts.resolver.nameServer1);
    addUnlessEmpty(row, IP_ADDRESS_SECONDARY_DNS, facts.resolver.nameServer2);
    row->addString(IP_ADDRESS_PERMANENT_MAC, facts.mac);
    table->addRow(row);
}

} // namespace

IpAddressGroup::IpAddressGroup() : VexGroup(GROUP_IP_ADDRESS, 1) {}

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

VexTable* IpAddressGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_IP_ADDRESS, "IpAddress");
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    const InterfaceSocket socket(SOCK_DGRAM);
    if (!socket.isOpen())
        return table;
    ReverseLookups lookups;
    uint32_t count = 0;
    for (const ifreq& entry : socket.list(kListBufferSize)) {
        const InterfaceFacts facts = readInterface(socket, &lookups, entry);
        if (facts.address[0] != '\0' && strcmp(facts.address, kLoopback) != 0 && facts.netmask[0] != '\0')
            addInterface(table, ++count, facts);
    }
    return table;
}
