#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef PCI_DEVICE_ATTRS_DEF[] = {
    // id                 name        type        max  enumeration
    {PCI_DEVICE_INDEX,    "Index",    VEX_ULONG,  0,   nullptr},
    {PCI_DEVICE_NAME,     "Name",     VEX_STRING, 180, nullptr},
    {PCI_DEVICE_REVISION, "Revision", VEX_STRING, 4,   nullptr},
    {VEX_END,             nullptr,    0,          0,   nullptr},
};

constexpr uint32_t PCI_DEVICE_KEYS_DEF[] = {PCI_DEVICE_INDEX, PCI_DEVICE_NAME};
// clang-format on

static_assert(isWellFormed(PCI_DEVICE_ATTRS_DEF), "PCI Device attributes: bad row");
static_assert(areKeysOf(PCI_DEVICE_KEYS_DEF, PCI_DEVICE_ATTRS_DEF), "PCI Device: key without attribute");
