#include "linux/IpAddressGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

IpAddressGroup::IpAddressGroup() : VexGroup(GROUP_IP_ADDRESS, 1) {}

VexTable* IpAddressGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_IP_ADDRESS, "IpAddress");
    return nullptr;
}
