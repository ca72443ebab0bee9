#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef DSK_PART_ATTRS_DEF[] = {
    // id     name                type        max  enumeration
    {1,       "Index",            VEX_ULONG,  0,   nullptr},
    {2,       "Name",             VEX_STRING, 255, nullptr},
    {3,       "Device Name",      VEX_STRING, 255, nullptr},
    {4,       "Total Size",       VEX_ULONG,  0,   nullptr},
    {5,       "Free Size",        VEX_ULONG,  0,   nullptr},
    {6,       "File System Type", VEX_ULONG,  0,   nullptr},
    {VEX_END, nullptr,            0,          0,   nullptr},
};

constexpr uint32_t DISK_PARTITION_KEYS_DEF[] = {1};
// clang-format on

static_assert(isWellFormed(DSK_PART_ATTRS_DEF), "Disk Partition attributes: bad row");
static_assert(areKeysOf(DISK_PARTITION_KEYS_DEF, DSK_PART_ATTRS_DEF), "Disk Partition: key without attribute");
