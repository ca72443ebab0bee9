#include "linux/pci/PciTables.h"

#include <algorithm>

namespace
{

// The first record of table whose sort key is key, or null.
template <typename Record>
const Record* findFirst(const Record* table, size_t count, uint32_t key)
{
    const Record* const end = table + count;
    const Record* const found = std::lower_bound(
        table, end, key, [](const Record& record, uint32_t wanted) { return pciSortKey(record) < wanted; });
    return found != end && pciSortKey(*found) == key ? found : nullptr;
}

} // namespace

const PciVendor* findPciVendor(uint32_t vendorId)
{
    return findFirst(PciVenTable, PciVenTableCount, vendorId);
}

const PciDevice* findPciDevice(uint32_t vendorId, uint32_t deviceId)
{
    if (vendorId > UINT16_MAX || deviceId > UINT16_MAX)
        return nullptr;
    return findFirst(PciDevTable, PciDevTableCount, vendorId << 16 | deviceId);
}
