// Sources: the kernel's list of interfaces and its answer about each one's hardware address, which an administrator
// can have changed. The type is a guess from the interface's name.

#include "linux/NetworkAdapterGroup.h"

#include <cstdio>
#include <cstring>

#include <sys/socket.h>

#include "com/Owned.h"
#include "com/VexDebug.h"
#include "com/VexEnumValues.h"
#include "com/VexTable.h"
#include "com/md5file.h"
#include "linux/network/InterfaceList.h"

namespace
{

constexpr int kListBufferSize = 8192;

struct AdapterPrefix {
    const char* prefix;
    uint32_t type;
    const char* logText;
};

// The first match wins. The last row matches every name; it logs "unknown" but stands for the type "Other".
constexpr AdapterPrefix kAdapterPrefixes[] = {
    {.prefix = "eth", .type = NETWORK_ADAPTER_TYPE_ETHERNET, .logText = "ethernet"},
    {.prefix = "tr", .type = NETWORK_ADAPTER_TYPE_TOKEN_RING, .logText = "tokenring"},
    {.prefix = "slip", .type = NETWORK_ADAPTER_TYPE_SLIP, .logText = "SLIP"},
    {.prefix = "escon", .type = NETWORK_ADAPTER_TYPE_ESCON, .logText = "ESCON"},
    {.prefix = "ctc", .type = NETWORK_ADAPTER_TYPE_CTC, .logText = "ctc (channel to channel)"},
    {.prefix = "iucv", .type = NETWORK_ADAPTER_TYPE_IUCV, .logText = "IUCV"},
    {.prefix = "ppp", .type = NETWORK_ADAPTER_TYPE_PPP, .logText = "ppp"},
    {.prefix = "", .type = NETWORK_ADAPTER_TYPE_OTHER, .logText = "unknown"},
};

void addAdapter(VexTable* table, uint32_t index, const char* name, const MacText& mac)
{
    char identity[sizeof mac + IFNAMSIZ];
    snprintf(identity, sizeof identity, "%s%s", mac, name);
    const OwnedText id(md5_checksum(identity));
    auto* const row = new VexTableRow;
    row->addULong(NETWORK_ADAPTER_INDEX, index);
    row->addString(NETWORK_ADAPTER_ID, id.get());
    row->addString(NETWORK_ADAPTER_PERMANENT_ADDRESS, mac);
    row->addString(NETWORK_ADAPTER_CURRENT_ADDRESS, mac);
    row->addULong(NETWORK_ADAPTER_TYPE, adapterType(name));
    row->addString(NETWORK_ADAPTER_MODEL, name);
    table->addRow(row);
}

} // namespace

NetworkAdapterGroup::NetworkAdapterGroup() : VexGroup(GROUP_NETWORK_ADAPTER, 1) {}

uint32_t adapterType(const char* interfaceName)
{
    const AdapterPrefix* row = kAdapterPrefixes;
    while (strncmp(interfaceName, row->prefix, strlen(row->prefix)) != 0)
        ++row;
    VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\ntype=%s", row->logText);
    return row->type;
}

VexTable* NetworkAdapterGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_NETWORK_ADAPTER, "NetworkAdapter");
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\nifc_len=%d", kListBufferSize);
    const InterfaceSocket socket(SOCK_STREAM);
    if (!socket.isOpen())
        return table;
    uint32_t count = 0;
    for (const ifreq& entry : socket.list(kListBufferSize)) {
        VEX_LOG(DEBUG_NETWORK_ADAPTER, VEX_LEVEL_DETAIL, "\nifr_name=%s", entry.ifr_name);
        MacText mac = "";
        // The loopback answers with zeros.
        if (readMac(socket, entry, DEBUG_NETWORK_ADAPTER, "\nMAC addr FAILED", mac) &&
            strcmp(mac, "00:00:00:00:00:00") != 0)
            addAdapter(table, ++count, entry.ifr_name, mac);
    }
    return table;
}
