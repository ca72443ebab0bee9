#include "linux/NetworkAdapterGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

NetworkAdapterGroup::NetworkAdapterGroup() : VexGroup(GROUP_NETWORK_ADAPTER, 1) {}

VexTable* NetworkAdapterGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_NETWORK_ADAPTER, "NetworkAdapter");
    return nullptr;
}
