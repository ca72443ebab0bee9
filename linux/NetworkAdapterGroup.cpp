#include "linux/NetworkAdapterGroup.h"

#include <cstdio>
#include <cstring>

#include <sys/ioctl.h>
#include <sys/socket.h>

#include "com/Owned.h"
#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "com/md5file.h"
#include "linux/InterfaceList.h"

static constexpr int kListBufferSize = 8192;

struct AdapterPrefix {
    const char* prefix;
    uint32_t type;
    const char* logText;
};

// The first match wins. The last row matches every name; it logs "unknown" but stands for the type "Other".
static constexpr AdapterPrefix kAdapterPrefixes[] = {
    {.prefix = "eth", .type = 3, .logText = "ethernet"},
    {.prefix = "tr", .type = 4, .logText = "tokenring"},
    {.prefix = "slip", .type = 6, .logText = "SLIP"},
    {.prefix = "escon", .type = 7, .logText = "ESCON"},
    {.prefix = "ctc", .type = 8, .logText = "ctc (channel to channel)"},
    {.prefix = "iucv", .type = 9, .logText = "IUCV"},
    {.prefix = "ppp", .type = 10, .logText = "ppp"},
    {.prefix = "", .type = 2, .logText = "unknown"},
};

NetworkAdapterGroup::NetworkAdapterGroup() : VexGroup(GROUP_NETWORK_ADAPTER, 1) {}

uint32_t adapterType(const char* interfaceName)
{
    const AdapterPrefix* row = kAdapterPrefixes;
    while (strncmp(interfaceName, row->prefix, strlen(row->prefix)) != 0)
        ++row;
    VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\ntype=%s", row->logText);
    return row->type;
}

// Asks for the interface's hardware address; mac stays as it is when there is no answer.
static void readMac(const InterfaceSocket& socket, const ifreq& entry, MacText& mac)
{
    ifreq request = requestFor(entry);
    if (!socket.ask(SIOCGIFHWADDR, &request)) {
        VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\nMAC addr FAILED");
        return;
    }
    formatMac(request, mac);
    VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\nMAC addr=%s", mac);
}

static void addAdapter(VexTable* table, uint32_t index, const char* name, const MacText& mac)
{
    char identity[sizeof mac + IFNAMSIZ];
    snprintf(identity, sizeof identity, "%s%s", mac, name);
    const OwnedText id(md5_checksum(identity));
    auto* row = new VexTableRow;
    row->addULong(NET_ADPTR_INDEX, index);
    row->addString(NET_ADPTR_ID, id.get());
    row->addString(NET_ADPTR_PERMANENT_ADDRESS, mac);
    row->addString(NET_ADPTR_CURRENT_ADDRESS, mac);
    row->addULong(NET_ADPTR_TYPE, adapterType(name));
    row->addString(NET_ADPTR_MODEL, name);
    table->addRow(row);
}

VexTable* NetworkAdapterGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_NETWORK_ADAPTER, "NetworkAdapter");
    auto* table = new VexTable(getGroupId(), getGroupVersion());
    VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\nifc_len=%d", kListBufferSize);
    const InterfaceSocket socket(SOCK_STREAM);
    if (!socket.isOpen())
        return table;
    uint32_t count = 0;
    for (const ifreq& entry : socket.list(kListBufferSize)) {
        VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\nifr_name=%s", entry.ifr_name);
        MacText mac = "";
        readMac(socket, entry, mac);
        // The loopback answers with zeros.
        if (mac[0] != '\0' && strcmp(mac, "00:00:00:00:00:00") != 0)
            addAdapter(table, ++count, entry.ifr_name, mac);
    }
    return table;
}
